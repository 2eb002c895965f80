// From a pressed shortcut to the window in its new frame, beside other ways of moving a window, on
// several window managers.
#include "sections.h"
#include "snap_contest.h"

#include <algorithm>
#include <array>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tessellon::benchmarks {
namespace {

constexpr double mostOfBareDaemon = 1.25;
constexpr double leastOfCommand = 2.5;
constexpr int manyRounds = 25;
constexpr int fewRounds = 15;

struct Round {
    std::string windowManager;
    std::string window;
    std::vector<std::string> command;
    int rounds;

    std::string name() const { return windowManager + ", " + window; }
};

std::vector<Round> program() {
    const std::vector<std::string> qt{"/usr/lib/qt6/bin/linguist"};
    const std::vector<std::string> gtk{"mousepad"};
    const std::vector<std::string> xterm{"xterm"};
    return {
        {"openbox", "Qt 6", qt, manyRounds},     {"openbox", "GTK 3", gtk, manyRounds},
        {"openbox", "xterm", xterm, manyRounds}, {"xfwm4", "Qt 6", qt, fewRounds},
        {"xfwm4", "GTK 3", gtk, fewRounds},      {"metacity", "Qt 6", qt, fewRounds},
        {"metacity", "xterm", xterm, fewRounds}, {"kwin", "Qt 6", qt, fewRounds},
        {"kwin", "xterm", xterm, fewRounds},
    };
}

bool neverArrived(const RivalTimes& result) {
    return result.misses == static_cast<int>(result.times.size());
}

std::string timeCell(const SnapContest& contest, Rival rival) {
    const auto found = contest.results.find(rival);
    if (found == contest.results.end()) {
        return "–";
    }
    const auto& result = found->second;
    if (neverArrived(result)) {
        return "never got the window there";
    }
    return spread(result.times) + (result.misses > 0
                                       ? ", missed " + std::to_string(result.misses) + " of " +
                                             std::to_string(result.times.size())
                                       : "");
}

/// How many times longer one takes than another; nothing when the former never got there.
std::optional<double> ratio(const SnapContest& contest, Rival slow, Rival fast) {
    const auto& result = contest.results.at(slow);
    if (neverArrived(result)) {
        return std::nullopt;
    }
    return median(result.times) / median(contest.results.at(fast).times);
}

/// The ratios of all rounds of one kind, for the list of budgets.
class Ratios {
  public:
    void add(std::string round, double value) { values_.emplace_back(value, std::move(round)); }

    std::string range() const {
        const auto [least, most] = std::minmax_element(values_.begin(), values_.end());
        return number(least->first) + " … " + number(most->first) + " ×";
    }
    bool empty() const { return values_.empty(); }
    bool allAtMost(double limit) const {
        return std::all_of(values_.begin(), values_.end(),
                           [=](const auto& value) { return value.first <= limit; });
    }
    bool allAtLeast(double limit) const {
        return std::all_of(values_.begin(), values_.end(),
                           [=](const auto& value) { return value.first >= limit; });
    }
    std::string below(double limit) const { return list(limit, true); }
    std::string above(double limit) const { return list(limit, false); }

  private:
    std::string list(double limit, bool below) const {
        std::string result;
        for (const auto& [value, round] : values_) {
            if (below ? value < limit : value > limit) {
                result += (result.empty() ? "" : "; ") + round + " " + number(value) + " ×";
            }
        }
        return result;
    }

    std::vector<std::pair<double, std::string>> values_;
};

std::string met(std::optional<double> value, bool isMet) {
    return !value ? "–" : number(*value) + (isMet ? "" : " – not met");
}

using Contests = std::vector<std::pair<Round, SnapContest>>;

void addTimes(Report& report, const Contests& contests) {
    constexpr std::array rivals{Rival::tessellon, Rival::bareDaemon, Rival::wmctrl, Rival::xdotool,
                                Rival::boundWmctrl};
    std::vector<std::string> columns{"median (95 %)"};
    for (const Rival rival : rivals) {
        columns.emplace_back(nameOf(rival));
    }
    report.table("Times", std::move(columns));
    int written = 0;
    std::size_t presses = 0;
    for (const auto& [round, contest] : contests) {
        std::vector<std::string> cells{round.name()};
        for (const Rival rival : rivals) {
            cells.push_back(timeCell(contest, rival));
        }
        report.addCells(std::move(cells));
        written += contest.writtenBefore;
        presses += contest.results.at(Rival::tessellon).times.size();
        const int misses = contest.results.at(Rival::tessellon).misses;
        if (misses > 0) {
            report.note("The program itself missed the frame " + std::to_string(misses) +
                        " times on " + round.name() + ".");
        }
    }
    report.note("Settings were written before the window was in its frame at " +
                std::to_string(written) + " of " + std::to_string(presses) + " presses.");
}

void addRatios(Report& report, const Contests& contests) {
    report.table("Ratios", {"", "tessellon ÷ bare daemon, ≤ " + number(mostOfBareDaemon),
                            "`wmctrl` ÷ tessellon, ≥ " + number(leastOfCommand, 1),
                            "`xdotool` ÷ tessellon, ≥ " + number(leastOfCommand, 1),
                            "`wmctrl` ÷ bare daemon", "`xdotool` ÷ bare daemon"});
    Ratios ofDaemon;
    Ratios ofCommands;
    Ratios best;
    for (const auto& [round, contest] : contests) {
        const double daemon = median(contest.results.at(Rival::tessellon).times) /
                              median(contest.results.at(Rival::bareDaemon).times);
        std::vector<std::string> cells{round.name(), met(daemon, daemon <= mostOfBareDaemon)};
        ofDaemon.add(round.name(), daemon);
        for (const Rival command : {Rival::wmctrl, Rival::xdotool}) {
            const auto value = ratio(contest, command, Rival::tessellon);
            cells.push_back(met(value, value >= leastOfCommand));
            if (value) {
                ofCommands.add(round.name() + ", " + std::string(nameOf(command)), *value);
            }
        }
        for (const Rival command : {Rival::wmctrl, Rival::xdotool}) {
            const auto value = ratio(contest, command, Rival::bareDaemon);
            cells.push_back(met(value, true));
            if (value) {
                best.add(round.name(), *value);
            }
        }
        report.addCells(std::move(cells));
    }
    report.judge("tessellon takes, of what the bare daemon takes", ofDaemon.range(),
                 {"≤ " + number(mostOfBareDaemon) + " ×", ofDaemon.allAtMost(mostOfBareDaemon),
                  "over it: " + ofDaemon.above(mostOfBareDaemon) + "."});
    if (!ofCommands.empty()) {
        report.judge(
            "a command takes, of what tessellon takes", ofCommands.range(),
            {"≥ " + number(leastOfCommand, 1) + " ×", ofCommands.allAtLeast(leastOfCommand),
             "under it: " + ofCommands.below(leastOfCommand) +
                 ". The bare daemon, than which nothing can be quicker, is itself " + best.range() +
                 " faster than the commands: all of them, and we, wait for the same work of window "
                 "manager, server and program, and a command only adds its own start to that. The "
                 "longer this work takes, the less can be gained."});
    }
}

void addProcessorTime(Report& report, const Contests& contests) {
    std::vector<std::string> columns{"one press"};
    for (const auto& entry : contests.front().second.processorTime.perSpan()) {
        columns.push_back(entry.first);
    }
    columns.emplace_back("share of tessellon");
    report.table("Whose processor time a press takes", std::move(columns));
    for (const auto& [round, contest] : contests) {
        const auto perSpan = contest.processorTime.perSpan();
        std::vector<std::string> cells{round.name()};
        double sum = 0;
        for (const auto& [name, milliseconds] : perSpan) {
            cells.push_back(number(milliseconds) + " ms");
            sum += milliseconds;
        }
        cells.push_back(number(100 * perSpan.front().second / sum, 0) + " %");
        report.addCells(std::move(cells));
    }
    report.note(
        "Until everybody has come to rest: that the window's program draws itself is part of it, "
        "that the settings are stored, and that the server answers the observer.");
}

}  // namespace

void measurePressToSettled(Report& report) {
    Contests contests;
    for (const Round& round : program()) {
        auto contest = holdSnapContest(round.windowManager, round.command, round.rounds);
        for (const Rival rival : {Rival::tessellon, Rival::bareDaemon}) {
            if (neverArrived(contest.results.at(rival))) {
                throw std::runtime_error(std::string(nameOf(rival)) +
                                         " does not move the window: " + round.name());
            }
        }
        contests.emplace_back(round, std::move(contest));
    }
    report.section("press", "A snap");
    addTimes(report, contests);
    addRatios(report, contests);
    addProcessorTime(report, contests);
}

}  // namespace tessellon::benchmarks
