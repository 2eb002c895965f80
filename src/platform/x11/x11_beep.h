// The beep port on X11: the bell of the keyboard, as loud as the user has set it.
#pragma once

#include "platform/beep.h"
#include "platform/x11/connection.h"

namespace tessellon::x11 {

class X11Beep : public Beep {
  public:
    explicit X11Beep(const Connection& connection) : connection_(connection) {}

    void beep() override {
        xcb_bell(connection_.xcb(), 0);
        xcb_flush(connection_.xcb());
    }

  private:
    const Connection& connection_;
};

}  // namespace tessellon::x11
