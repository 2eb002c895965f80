// One window, moved to and fro between two places by everybody in turn, each at the press of a key.
// All are measured by the same observer in the same run; while one works, the others are stopped.
#pragma once

#include "processor_time.h"
#include "statistics.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon::benchmarks {

enum class Rival { tessellon, bareDaemon, wmctrl, xdotool, boundWmctrl };
std::string_view nameOf(Rival rival);

struct RivalTimes {
    /// From the key press to the last change of the window's frame.
    std::vector<Milliseconds> times;
    /// How often the window was not in its frame then.
    int misses = 0;
};

struct SnapContest {
    std::map<Rival, RivalTimes> results;
    /// What one press of the program's keys costs everybody, until all have come to rest.
    ProcessorTime processorTime;
    /// How often the program wrote its settings before the window was in its frame.
    int writtenBefore = 0;
};

/// Two presses of everybody's in each round, with a window of the program that the command starts.
/// A command that fails misses; everything else that does not run throws.
SnapContest holdSnapContest(const std::string& windowManager, std::vector<std::string> command,
                            int rounds);

}  // namespace tessellon::benchmarks
