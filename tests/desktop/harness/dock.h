// A bar at an edge of a monitor that reserves its room, as panels do.
#pragma once

#include "harness/frame.h"
#include "harness/x_session.h"

#include <array>
#include <cstdint>
#include <optional>

#include <xcb/xcb.h>

namespace tessellon::desktop {

enum class Edge { left, right, top, bottom };

/// Where a dock is and what it asks for.
struct DockPlace {
    Frame frame;
    Edge edge = Edge::top;
    /// What it says that it reserves, in the order of _NET_WM_STRUT_PARTIAL (EWMH), when that is
    /// not what it covers.
    std::optional<std::array<std::uint32_t, 12>> claims{};
};

class Dock {
  public:
    /// Shows the bar and waits until the window manager knows it. It goes with this object.
    Dock(XSession& session, const DockPlace& place);
    ~Dock();
    Dock(const Dock&) = delete;
    Dock& operator=(const Dock&) = delete;

  private:
    XSession& x_;
    xcb_window_t window_;
};

}  // namespace tessellon::desktop
