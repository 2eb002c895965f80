// The port for the sound that says no.
#pragma once

namespace tessellon {

class Beep {
  public:
    virtual ~Beep() = default;

    /// Sounds once; returns at once.
    virtual void beep() = 0;
};

}  // namespace tessellon
