// The port for time and for waiting. Everything runs on the one thread that runs the loop.
#pragma once

#include "base/token.h"
#include "platform/types.h"

#include <functional>

namespace tessellon {

class RunLoop {
  public:
    virtual ~RunLoop() = default;

    /// Calls `callback` once, `delay` from now; a delay of 0 means right after the current turn.
    virtual Token after(Seconds delay, std::function<void()> callback) = 0;

    /// Calls `callback` every `period`, first after one period.
    virtual Token every(Seconds period, std::function<void()> callback) = 0;

    /// Time since some fixed moment; never goes back and is not touched by changes of the clock.
    virtual Seconds uptime() const = 0;

    /// Calls `callback` whenever the file descriptor can be read.
    virtual Token watchReadable(int descriptor, std::function<void()> callback) = 0;

    /// Calls `callback` every time the loop is about to wait for something to happen.
    virtual Token beforeBlocking(std::function<void()> callback) = 0;
};

}  // namespace tessellon
