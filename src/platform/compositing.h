// The port for the compositor: whether translucent windows are translucent, and what has to be
// arranged for our own panels to look right under one.
#pragma once

#include "base/signal.h"

#include <cstdint>

namespace tessellon {

/// A window of ours as the desktop's other clients know it (an X id).
using NativeWindow = std::uint64_t;

class Compositing {
  public:
    virtual ~Compositing() = default;

    /// Whether something composites the screen now. Without it, what should be translucent is
    /// black. Compositors come and go: ask each time before a panel is shown.
    virtual bool isActive() const = 0;

    /// A compositor came or went. Where nobody tells of it, it is never emitted.
    virtual const Signal<>& changed() const = 0;

    /// Has a panel of ours shown without a shadow, and empty instead of with arbitrary content
    /// until its first picture is there. Once for each native window, before it is shown.
    virtual void preparePanel(NativeWindow window) = 0;
};

}  // namespace tessellon
