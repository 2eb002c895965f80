// Keeps the toolkit away from a session bus that does not answer: it would wait for that at its
// start, for ever.
#pragma once

#include <optional>
#include <string>

namespace tessellon {

/// While this lives, the environment names no session bus. To be made before the application
/// object, and to go after that is made: the toolkit, which asks for the bus once, is made to do so
/// then and does without it from there on. Our own connections and programs that we start find the
/// bus again, which may only be slow. No other thread may use the environment when this comes or
/// goes.
class HiddenSessionBus {
  public:
    HiddenSessionBus();
    ~HiddenSessionBus();
    HiddenSessionBus(const HiddenSessionBus&) = delete;
    HiddenSessionBus& operator=(const HiddenSessionBus&) = delete;

  private:
    std::optional<std::string> address_;
};

}  // namespace tessellon
