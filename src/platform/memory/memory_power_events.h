// A machine that wakes when it is told to.
#pragma once

#include "platform/power_events.h"

namespace tessellon {

class MemoryPowerEvents final : public PowerEvents {
  public:
    void wake() { didWake_.emit(); }
};

}  // namespace tessellon
