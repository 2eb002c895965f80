// Makes sure that one instance of the program runs on a display: a selection that the first one
// owns for as long as it lives (in the manner of ICCCM 2.8 manager selections). Whoever finds it
// taken can ask the holder to show itself.
#pragma once

#include "base/signal.h"
#include "base/token.h"
#include "platform/types.h"
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

    /// Asks the instance that has it to show itself, and waits until it says that it will. False
    /// when it is gone, or has not answered when `limit` has passed.
    bool askHolder(Seconds limit);

    /// Emitted while this instance has it, when another one has asked.
    const Signal<>& asked() const { return asked_; }

  private:
    xcb_window_t owner() const;
    void answer(const xcb_generic_event_t& event);
    void send(xcb_window_t to, xcb_window_t from) const;

    Connection& connection_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    Signal<> asked_;
    Token questions_;
};

}  // namespace tessellon::x11
