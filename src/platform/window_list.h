// The port for the window server's own list of what is on screen. It knows nothing of applications'
// views of their windows; the engine matches the two.
#pragma once

#include "base/geometry.h"
#include "platform/types.h"

#include <optional>
#include <vector>

namespace tessellon {

struct WindowListEntry {
    /// 0 for ordinary windows; panels, docks, menus and desktops are on other layers.
    std::optional<int> layer;
    std::optional<Pid> ownerPid;
    /// What the user sees of it, in the accessibility space.
    std::optional<Rect> bounds;
};

class WindowList {
  public:
    virtual ~WindowList() = default;

    /// The windows on screen on the current workspace, desktop elements left out, front-most first.
    /// Nothing when the window server cannot tell.
    virtual std::optional<std::vector<WindowListEntry>> onScreenWindows() const = 0;
};

}  // namespace tessellon
