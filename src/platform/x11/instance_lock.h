// Makes sure that one instance of the program runs on a display: a selection that the first one
// owns for as long as it lives (in the manner of ICCCM 2.8 manager selections).
#pragma once

#include "platform/x11/connection.h"

#include <xcb/xcb.h>

namespace tessellon::x11 {

class InstanceLock {
  public:
    explicit InstanceLock(Connection& connection);
    ~InstanceLock();
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;

    /// False when another instance has it.
    bool acquire();

  private:
    Connection& connection_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

}  // namespace tessellon::x11
