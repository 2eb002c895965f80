// Frames of windows that the user is dragging, told only when they are whole. For the accessibility
// port.
#pragma once

#include "base/geometry.h"
#include "platform/x11/connection.h"
#include "platform/x11/fence.h"
#include "platform/x11/window_mirror.h"

#include <optional>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// A window manager resizes a window in several requests. Who looks between them sees a window that
/// is resized at its left or top edge somewhere else with its old size, as if it were moved.
class DraggedFrame {
  public:
    DraggedFrame(Connection& connection, WindowMirror& mirror);

    /// The top left of what the user sees of the window, in root coordinates. Nothing while its
    /// size is changing, or when the window is gone. Refreshes the mirror, so pointers into it are
    /// no longer good.
    std::optional<Point> origin(xcb_window_t id);

    /// The drag is over.
    void forget();

  private:
    struct Seen {
        xcb_window_t window;
        Rect frame;
    };

    WindowMirror& mirror_;
    Fence fence_;
    std::optional<Seen> whole_;
    bool windowManagerAnswers_ = true;
};

}  // namespace tessellon::x11
