// The port for what happens to the machine as a whole.
#pragma once

#include "base/signal.h"

namespace tessellon {

class PowerEvents {
  public:
    virtual ~PowerEvents() = default;

    /// Emitted after the machine woke from sleep.
    const Signal<>& didWake() const { return didWake_; }

  protected:
    PowerEvents() = default;
    Signal<> didWake_;
};

}  // namespace tessellon
