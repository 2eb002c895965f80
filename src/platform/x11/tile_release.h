// Frees windows that the window manager keeps in a tile of its own, at an edge or in a corner of
// the screen, where it ignores requests for other frames. For the frame writer.
#pragma once

#include "base/geometry.h"
#include "platform/x11/client_window.h"
#include "platform/x11/connection.h"
#include "platform/x11/window_manager_habits.h"

namespace tessellon::x11 {

/// Tells a window manager with this habit to let the window out of its tile; where the window goes
/// is then to be written anew. `wanted` is where that will be, in root coordinates; the pointer
/// must not be dragging anything. Gives false, and sends nothing, when the window manager is not
/// known to keep windows, or does not keep this one.
bool releaseFromTile(const Connection& connection, TileRelease way, const ClientWindow& window,
                     const Rect& wanted);

}  // namespace tessellon::x11
