// Buttons that Return presses, which the toolkit leaves to Space.
#pragma once

#include <QAbstractButton>
#include <QKeyEvent>

namespace tessellon {

/// Clicks the button when the key is Return or Enter, once however long it is held. False for every
/// other key.
bool clickByReturn(QAbstractButton& button, const QKeyEvent& event);

}  // namespace tessellon
