// Two, four and eight windows brought into a tiling, beside one window that is snapped, on several
// window managers.
#include "sections.h"
#include "tiled_clocks.h"
#include "tiling_contests.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace tessellon::benchmarks {
namespace {

constexpr int operationRounds = 10;
constexpr int pressRounds = 15;
constexpr double mostOfSnap = 2.0;
const std::vector<std::string> windowManagers{"openbox", "xfwm4", "metacity", "kwin"};

struct Measured {
    std::string windowManager;
    TilingOperations operations;
    TilingPresses presses;
};

double times(const TimesByCount& values, std::size_t count) {
    return median(values.at(count)) / median(values.at(1));
}

double ratioOfPresses(const TilingPresses& presses) {
    return median(presses.tile) / median(presses.snap);
}

void addPresses(Report& report, const std::vector<Measured>& all) {
    report.table("From the key press to the last window in its frame",
                 {"median (95 %)", "one window", "eight windows", "ratio", "bare messages: ratio",
                  "budget", ""});
    for (const auto& [name, operations, presses] : all) {
        const double ratio = ratioOfPresses(presses);
        const double bare = times(operations.bare, mostTiled);
        const Milliseconds more =
            (median(operations.bare.at(mostTiled)) - median(operations.bare.at(1))) /
            static_cast<double>(mostTiled - 1);
        Budget budget{
            "≤ " + number(mostOfSnap, 0) + " ×", ratio <= mostOfSnap,
            "the bare messages for eight windows, sent together and waited for once, take " +
                number(bare) +
                " × those for one: every further window costs the window "
                "manager and the server " +
                text(more) + ", one after the other. Processor time for eight windows: " +
                presses.processorOfTile.described() +
                "; for one: " + presses.processorOfSnap.described() + "."};
        report.addCells({name, spread(presses.snap), spread(presses.tile), number(ratio) + " ×",
                         number(bare) + " ×", budget.text, verdict(budget.met)});
        report.judge("eight windows, of what one takes, on " + name, number(ratio) + " ×",
                     std::move(budget));
    }
}

void addOperations(Report& report, const std::vector<Measured>& all) {
    report.table("The operation alone, and bare messages with one fence",
                 {"median (95 %)", "windows", "tessellon", "bare messages", "tessellon ÷ bare",
                  "of one window", "bare, of one window"});
    std::uint64_t snapTrips = 0;
    std::uint64_t tileTrips = 0;
    for (const auto& [name, operations, presses] : all) {
        for (const auto& [count, samples] : operations.operation) {
            const auto& bare = operations.bare.at(count);
            report.addCells({name, std::to_string(count), spread(samples), spread(bare),
                             number(median(samples) / median(bare)) + " ×",
                             number(times(operations.operation, count)) + " ×",
                             number(times(operations.bare, count)) + " ×"});
        }
        snapTrips = std::max(snapTrips, operations.mostSnapRoundTrips);
        tileTrips = std::max(tileTrips, operations.mostTileRoundTrips);
    }
    report.note("Waits for an answer: at most " + std::to_string(snapTrips) + " for a snap, " +
                std::to_string(tileTrips) + " for a tiling of any size.");
}

}  // namespace

void measureTiling(Report& report) {
    std::vector<Measured> all;
    for (const auto& name : windowManagers) {
        all.push_back({name, measureTilingOperations(name, operationRounds),
                       measureTilingPresses(name, pressRounds)});
    }
    report.section("tiling", "Tiling");
    addPresses(report, all);
    addOperations(report, all);
}

}  // namespace tessellon::benchmarks
