// The compositor of an X11 screen, known by the manager selection of EWMH.
#pragma once

#include "platform/compositing.h"
#include "platform/x11/connection.h"

namespace tessellon::x11 {

class X11Compositing final : public Compositing {
  public:
    /// The connection must outlive this object.
    explicit X11Compositing(const Connection& connection) : connection_(connection) {}

    /// One round trip.
    bool isActive() const override;
    void preparePanel(NativeWindow window) override;

  private:
    const Connection& connection_;
};

}  // namespace tessellon::x11
