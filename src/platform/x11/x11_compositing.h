// The compositor of an X11 screen, known by the manager selection of EWMH.
#pragma once

#include "platform/compositing.h"
#include "platform/x11/connection.h"

#include <cstdint>

namespace tessellon::x11 {

class X11Compositing final : public Compositing {
  public:
    /// The connection must outlive this object.
    explicit X11Compositing(const Connection& connection);

    /// One round trip.
    bool isActive() const override;
    const Signal<>& changed() const override { return changed_; }
    void preparePanel(NativeWindow window) override;

  private:
    void watchSelection();

    const Connection& connection_;
    std::uint8_t selectionNotify_ = 0;  // the event of the XFixes extension; 0 without it
    Signal<> changed_;
    Token listener_;
};

}  // namespace tessellon::x11
