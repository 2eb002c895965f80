// A bar at the top of the screen that reserves its room, as panels do.
#pragma once

#include "harness/x_session.h"

#include <cstdint>

#include <xcb/xcb.h>

namespace tessellon::desktop {

class Dock {
  public:
    /// Shows a bar of this height over the whole width of the screen. It goes with this object.
    Dock(XSession& session, std::uint16_t height);
    ~Dock();
    Dock(const Dock&) = delete;
    Dock& operator=(const Dock&) = delete;

  private:
    XSession& x_;
    xcb_window_t window_;
};

}  // namespace tessellon::desktop
