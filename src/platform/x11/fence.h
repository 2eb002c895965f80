// Waits until the window manager has handled everything that was sent to it so far.
#pragma once

#include "base/token.h"
#include "platform/types.h"
#include "platform/x11/connection.h"

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// A window of our own that is never mapped. A request to configure it goes through the window
/// manager, in order behind our messages, and comes back as an event; with no window manager the
/// server answers at once.
class Fence {
  public:
    explicit Fence(Connection& connection);
    ~Fence();
    Fence(const Fence&) = delete;
    Fence& operator=(const Fence&) = delete;

    /// False when the window manager did not get round to it within `timeout`.
    bool wait(Seconds timeout);

    /// Begins to wait without stopping the program.
    void send();
    /// Whether the window manager has got round to the fence that was sent last.
    bool isAnswered() const { return seen_ == sent_; }

  private:
    Connection& connection_;
    xcb_window_t window_;
    std::int16_t sent_ = 0;
    std::int16_t seen_ = 0;
    Token listener_;
};

}  // namespace tessellon::x11
