// The port for the program's own ordinary windows: those that the window manager manages and the
// user can close, unlike panels.
#pragma once

#include "base/signal.h"

namespace tessellon {

/// Destroying a window closes it, without a word to the subscribers.
class Window {
  public:
    virtual ~Window() = default;

    /// Brings it to the front, also when it was closed or minimized, and gives it the keyboard. In
    /// the middle of the main screen when it is shown for the first time.
    virtual void makeKeyAndOrderFront() = 0;

    /// Shows it, unless it is visible, and leaves the keyboard where it is.
    virtual void orderFront() = 0;

    /// False once it was closed; a minimized window is visible.
    virtual bool isVisible() const = 0;

    /// Emitted after the user has closed it. It is hidden then and can be shown again.
    const Signal<>& closed() const { return closed_; }

  protected:
    Window() = default;
    Signal<> closed_;
};

}  // namespace tessellon
