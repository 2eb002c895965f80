// A run loop whose time passes only when it is told to, so that what waits can be tested at once.
#pragma once

#include "base/signal.h"
#include "platform/run_loop.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>

namespace tessellon {

class ManualRunLoop final : public RunLoop {
  public:
    Token after(Seconds delay, std::function<void()> callback) override;
    Token every(Seconds period, std::function<void()> callback) override;
    Seconds uptime() const override { return now_; }
    Token watchReadable(int descriptor, std::function<void()> callback) override;
    Token beforeBlocking(std::function<void()> callback) override;

    /// One turn without waiting: what became readable, then the timers that are due, then the
    /// callbacks before blocking. What a callback asks for after a delay of 0 is left for the next
    /// turn.
    void runTurn();

    /// Lets time pass, turn by turn, with every timer called at its time.
    void advance(Seconds span);

  private:
    /// Whole nanoseconds, so that times reached by different steps compare equal.
    using Time = std::chrono::nanoseconds;
    struct Timer {
        Time due{};
        std::optional<Time> period;
        std::shared_ptr<const std::function<void()>> callback;
    };
    struct Watch {
        int descriptor = -1;
        std::shared_ptr<const std::function<void()>> callback;
    };
    /// Shared with the tokens, which may outlive this object.
    struct State {
        std::uint64_t nextId = 0;
        std::map<std::uint64_t, Timer> timers;
        std::map<std::uint64_t, Watch> watches;
    };

    Token addTimer(Timer timer);
    void runReadable();
    void runTimers();

    Time now_{};
    std::shared_ptr<State> state_ = std::make_shared<State>();
    Signal<> beforeBlocking_;
};

}  // namespace tessellon
