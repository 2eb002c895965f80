// Checkable buttons as assistive technology works them.
#pragma once

#include <QAbstractButton>

namespace tessellon {

/// Has assistive technology click the button when it changes its state, so that whoever listens for
/// clicks hears of it; the toolkit would only flip what is drawn. It is a check box, or a radio
/// button where it excludes others.
void setAccessibleByClick(QAbstractButton& button);

}  // namespace tessellon
