// The run loop port on Qt's event loop, for the program's one thread.
#pragma once

#include "platform/run_loop.h"

#include <QObject>

namespace tessellon {

class QtRunLoop : public RunLoop {
  public:
    /// A QCoreApplication must exist and outlive the loop.
    QtRunLoop() = default;
    QtRunLoop(const QtRunLoop&) = delete;
    QtRunLoop& operator=(const QtRunLoop&) = delete;

    Token after(Seconds delay, std::function<void()> callback) override;
    Token every(Seconds period, std::function<void()> callback) override;
    Seconds uptime() const override;
    Token watchReadable(int descriptor, std::function<void()> callback) override;
    Token beforeBlocking(std::function<void()> callback) override;

    /// Runs until quit; gives the exit code.
    int run();
    /// Makes run return after the current turn.
    void quit(int exitCode);

  private:
    enum class Repeat { once, always };
    Token startTimer(Seconds interval, Repeat repeat, std::function<void()> callback);

    QObject owner_;  // of every timer and notifier that is still registered
};

}  // namespace tessellon
