// Whether dragging snaps windows at all.
#pragma once

#include "platform/user_defaults.h"

namespace tessellon {

/// Whether the user wants windows to snap when they are dragged, now.
bool isDragSwitchedOn(const UserDefaults& defaults);

}  // namespace tessellon
