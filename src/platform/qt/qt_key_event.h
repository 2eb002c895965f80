// Keys that reach a panel past the toolkit, in the toolkit's own terms.
#pragma once

#include "platform/keyboard_focus.h"

#include <QKeyEvent>

namespace tessellon {

/// The event that a widget of Qt's would get for this key. Command is Qt's Meta. A key with command
/// or control types nothing. Editing combinations with control are found by the place of the key
/// where the layout has no Latin letters.
QKeyEvent toQtKeyEvent(const TypedKey& key);

}  // namespace tessellon
