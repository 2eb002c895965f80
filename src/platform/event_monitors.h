// The port for what the pointer is doing, wherever it is.
#pragma once

#include "base/geometry.h"

#include <optional>

namespace tessellon {

class EventMonitors {
  public:
    virtual ~EventMonitors() = default;

    /// Where the pointer is now, in screen coordinates (bottom-left origin of the primary display,
    /// y up); nothing when there is no pointer to ask about.
    virtual std::optional<Point> pointerLocation() const = 0;
};

}  // namespace tessellon
