// SIGTERM, SIGINT and SIGHUP as an ordinary event of the run loop, so that the program can save
// what it has and end.
#pragma once

#include "base/token.h"
#include "platform/run_loop.h"

#include <functional>

namespace tessellon {

class TerminationSignals {
  public:
    /// From now on the signals wait instead of ending the program. To be constructed before the
    /// program starts any thread (toolkits do), since a thread that does not block the signals
    /// would still be killed by them.
    TerminationSignals();
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

    /// Calls `callback` for each of the signals, those that wait already included.
    void serve(RunLoop& loop, std::function<void()> callback);

  private:
    int descriptor_;
    Token readable_;
};

}  // namespace tessellon
