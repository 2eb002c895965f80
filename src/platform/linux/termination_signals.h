// SIGTERM, SIGINT and SIGHUP as an ordinary event of the run loop, so that the program can save
// what it has and end.
#pragma once

#include "base/token.h"
#include "platform/run_loop.h"

#include <functional>

namespace tessellon {

class TerminationSignals {
  public:
    /// Calls `callback` for each of the signals. To be constructed before the program starts any
    /// thread, since a thread that does not block the signals would still be killed by them.
    TerminationSignals(RunLoop& loop, std::function<void()> callback);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

  private:
    int descriptor_;
    Token readable_;
};

}  // namespace tessellon
