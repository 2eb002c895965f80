// Who works how long: the processor time of several programs over some spans of time.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace tessellon::benchmarks {

class ProcessorTime {
  public:
    /// Takes part under a name, which is what a table calls it.
    void add(std::string name, std::vector<pid_t> processes);

    /// A span that counts goes from start() to stop().
    void start();
    void stop();

    /// The milliseconds of each name for one of all the spans, in the order they were added.
    std::vector<std::pair<std::string, double>> perSpan() const;

    /// "tessellon 0.31, window manager 0.80": the same as text.
    std::string described() const;

  private:
    struct Member {
        std::string name;
        std::vector<pid_t> processes;
        double startedAt = 0;
        double milliseconds = 0;
    };
    std::vector<Member> members_;
    int spans_ = 0;
};

}  // namespace tessellon::benchmarks
