// The compositor of an X11 screen, known by the manager selection of EWMH.
#pragma once

#include "platform/compositing.h"
#include "platform/x11/connection.h"
#include "platform/x11/selection_watch.h"

namespace tessellon::x11 {

class X11Compositing final : public Compositing {
  public:
    /// The connection must outlive this object.
    explicit X11Compositing(const Connection& connection);

    /// One round trip.
    bool isActive() const override;
    const Signal<>& changed() const override { return watch_.changed(); }
    void preparePanel(NativeWindow window) override;

  private:
    const Connection& connection_;
    SelectionWatch watch_;
};

}  // namespace tessellon::x11
