// Capturing where all windows are, and bringing them back there, by the program's own adapters.
#include "app/preferences.h"
#include "arrangements/apply.h"
#include "arrangements/capture.h"
#include "bare_mover.h"
#include "contenders.h"
#include "crowd.h"
#include "engine/window_engine.h"
#include "growth.h"
#include "ports/real_desktop.h"
#include "sections.h"

#include <array>
#include <cstddef>
#include <cstdlib>
#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tessellon::benchmarks {
namespace {

using desktop::PrivateDesktop;
using desktop::RealDesktop;

constexpr std::array<std::size_t, 4> counts{10, 30, 100, 300};
constexpr int rounds = 6;

using TimesByCount = std::map<std::size_t, std::vector<Milliseconds>>;

struct Times {
    TimesByCount capture;
    TimesByCount apply;
    TimesByCount bare;
};

struct Connection {
    xcb_connection_t* xcb = xcb_connect(nullptr, nullptr);
    Connection() = default;
    ~Connection() { xcb_disconnect(xcb); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
};

/// The same windows in other places, of another size.
Arrangement shifted(Arrangement arrangement, double by) {
    for (auto& placement : arrangement.placements) {
        placement.unit = {placement.unit.x * 0.8 + by, placement.unit.y * 0.8 + by,
                          placement.unit.width + by, placement.unit.height + by};
    }
    return arrangement;
}

/// What bare messages would have to bring about for the windows to be where they are now.
std::vector<BareMove> movesTo(WindowEngine& engine) {
    std::vector<BareMove> moves;
    for (const auto& [window, frame] : engine.windows().orderedVisibleWindows()) {
        const auto whole = [](double value) { return static_cast<int>(value); };
        moves.push_back(
            {static_cast<xcb_window_t>(window.id),
             {whole(frame.x), whole(frame.y), whole(frame.width), whole(frame.height)}});
    }
    return moves;
}

void measureCount(Times& times, std::size_t count) {
    PrivateDesktop desktop;
    desktop.startWindowManager("openbox");
    openCrowd(desktop, count);
    setenv("DISPLAY", desktop.display().c_str(), 1);
    RealDesktop real;
    real.defaults().setBool(preference::ignoreSmall, false);
    WindowEngine engine(real.services());
    const Connection connection;
    BareMover mover(connection.xcb);

    const auto timed = [&](std::vector<Milliseconds>& samples, const auto& operation) {
        const auto start = Clock::now();
        operation();
        samples.emplace_back(Clock::now() - start);
        waitUntilQuiet(desktop.windowManagerProcess().pid());
    };
    const auto original = captureArrangement(engine, "crowd");
    if (!original || original->placements.size() != count) {
        throw std::runtime_error("the windows are not all captured");
    }
    const std::array arrangements{shifted(*original, 0.01), shifted(*original, 0.03)};
    std::array<std::vector<BareMove>, arrangements.size()> moves;
    for (std::size_t i = 0; i < arrangements.size(); ++i) {
        applyArrangement(engine, arrangements.at(i));
        moves.at(i) = movesTo(engine);
    }
    if (moves.front() == moves.back()) {
        throw std::runtime_error("the windows are not moved");
    }
    for (int i = 0; i < rounds; ++i) {
        for (std::size_t which = 0; which < arrangements.size(); ++which) {
            timed(times.apply[count], [&] { applyArrangement(engine, arrangements.at(which)); });
            if (movesTo(engine) != moves.at(which)) {
                throw std::runtime_error("a window is not where its arrangement has it");
            }
            timed(times.capture[count],
                  [&] { static_cast<void>(captureArrangement(engine, "again")); });
        }
        for (const auto& wanted : moves) {
            timed(times.bare[count], [&] { mover.move(wanted); });
        }
    }
}

void addRow(Report& report, const std::string& name, const TimesByCount& times) {
    std::vector<std::string> cells{name};
    for (const auto& entry : times) {
        cells.push_back(spread(entry.second));
    }
    cells.push_back(growth(times));
    report.addCells(std::move(cells));
}

}  // namespace

void measureArrangements(Report& report) {
    Times times;
    for (const std::size_t count : counts) {
        measureCount(times, count);
    }
    report.section("arrangements", "Arrangements");
    std::vector<std::string> columns{"median (95 %)"};
    for (const std::size_t count : counts) {
        columns.push_back(std::to_string(count) + " windows");
    }
    columns.emplace_back("growth");
    report.table("", std::move(columns));
    addRow(report, "capture", times.capture);
    addRow(report, "apply", times.apply);
    addRow(report, "bare messages to the same frames, one fence", times.bare);
    std::vector<std::string> ratios{"apply ÷ bare messages"};
    for (const std::size_t count : counts) {
        ratios.push_back(number(median(times.apply.at(count)) / median(times.bare.at(count))) +
                         " ×");
    }
    ratios.emplace_back("");
    report.addCells(std::move(ratios));
}

}  // namespace tessellon::benchmarks
