// Eight windows brought into a tiling, beside one window that is snapped: in this process, where
// only the operation itself counts, and by key press, where the programs' own work counts too.
#include "app/preferences.h"
#include "bare_mover.h"
#include "contenders.h"
#include "engine/placement.h"
#include "engine/window_engine.h"
#include "frame_observer.h"
#include "harness/program.h"
#include "ports/real_desktop.h"
#include "sections.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace tessellon::benchmarks {
namespace {

using desktop::Frame;
using desktop::Key;
using desktop::PrivateDesktop;
using desktop::RealDesktop;

constexpr std::size_t windowCount = 8;
constexpr int rounds = 25;
constexpr double mostOfSnap = 2.0;
constexpr Rect area{8, 8, 1904, 1064};
constexpr double gap = 8;

std::vector<xcb_window_t> startClocks(PrivateDesktop& desktop) {
    std::vector<xcb_window_t> windows;
    for (std::size_t i = 0; i < windowCount; ++i) {
        windows.push_back(
            desktop.startWithWindow({"xclock", "-update", "3600", "-xrm", "XClock.input: True"}));
    }
    return windows;
}

/// Where tiling puts the windows, the focused one first.
std::vector<Frame> tiledFrames(double masterShare) {
    constexpr auto rows = static_cast<double>(windowCount - 1);
    std::vector<Frame> frames;
    for (std::size_t i = 0; i < windowCount; ++i) {
        const Rect unit = i == 0 ? Rect{0, 0, masterShare, 1}
                                 : Rect{masterShare, static_cast<double>(i - 1) / rows,
                                        1 - masterShare, 1 / rows};
        const Rect frame = placeUnit(unit, area, gap);
        const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
        frames.push_back({whole(frame.x), whole(frame.y), whole(frame.width), whole(frame.height)});
    }
    return frames;
}

struct Times {
    std::vector<Milliseconds> snap;
    std::vector<Milliseconds> tile;
};

double ratio(const Times& times) {
    return median(times.tile) / median(times.snap);
}

void add(Report& report, const Times& times, const std::string& how,
         std::optional<Budget> budget = std::nullopt) {
    report.add(timeRow("one window, " + how, times.snap));
    report.add(timeRow("eight windows, " + how, times.tile, number(ratio(times)) + " × one window",
                       std::move(budget)));
}

Budget tilingBudget(const Times& times) {
    return {"≤ " + number(mostOfSnap, 0) + " × one window", ratio(times) <= mostOfSnap};
}

struct Connection {
    xcb_connection_t* xcb = xcb_connect(nullptr, nullptr);
    Connection() = default;
    ~Connection() { xcb_disconnect(xcb); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
};

std::vector<BareMove> bareMoves(const std::vector<xcb_window_t>& windows,
                                const std::vector<Frame>& frames) {
    std::vector<BareMove> moves;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const Frame& frame = frames[i];
        moves.push_back({windows[i], {frame.x, frame.y, frame.width, frame.height}});
    }
    return moves;
}

void checkTiled(WindowEngine& engine, const std::vector<Frame>& frames) {
    for (const auto& [window, frame] : engine.windows().orderedVisibleWindows()) {
        const auto here = [&shown = frame](const Frame& tile) {
            return Rect{1.0 * tile.x, 1.0 * tile.y, 1.0 * tile.width, 1.0 * tile.height} == shown;
        };
        if (std::none_of(frames.begin(), frames.end(), here)) {
            throw std::runtime_error("a window is in no tile");
        }
    }
}

void measureOperations(Report& report) {
    PrivateDesktop desktop;
    desktop.startWindowManager("openbox");
    const auto windows = startClocks(desktop);
    desktop.windows().activate(windows.front());
    setenv("DISPLAY", desktop.display().c_str(), 1);
    RealDesktop real;
    real.defaults().setBool(preference::tilingEnabled, true);
    real.defaults().setBool(preference::ignoreSmall, false);
    real.defaults().setDouble(preference::maxTiles, windowCount);
    WindowEngine engine(real.services());

    const auto timed = [&](const auto& operation) {
        const auto start = Clock::now();
        operation();
        const Milliseconds time = Clock::now() - start;
        // The clients draw themselves after the operation.
        waitUntilQuiet(desktop.windowManagerProcess().pid());
        return time;
    };
    const Connection connection;
    BareMover mover(connection.xcb);
    constexpr std::array<double, 2> masterShares{0.5, 0.6};
    const BareMove corner{windows.front(), {964, 8, 948, 528}};
    Times times;
    Times bare;
    std::uint64_t tileRoundTrips = 0;
    std::uint64_t snapRoundTrips = 0;
    for (int i = -1; i < rounds; ++i) {
        for (const double share : masterShares) {
            real.defaults().setDouble(preference::masterRatio, 100 * share);
            auto roundTrips = real.roundTrips();
            const Milliseconds tile = timed([&] { engine.tile(); });
            const auto tileTrips = real.roundTrips() - roundTrips;
            checkTiled(engine, tiledFrames(share));
            roundTrips = real.roundTrips();
            const Milliseconds snap = timed([&] { engine.snap(SnapAction::topRight); });
            if (i >= 0) {
                snapRoundTrips = std::max(snapRoundTrips, real.roundTrips() - roundTrips);
                tileRoundTrips = std::max(tileRoundTrips, tileTrips);
                times.tile.push_back(tile);
                times.snap.push_back(snap);
            }
        }
        for (const double share : masterShares) {
            const auto moves = bareMoves(windows, tiledFrames(share));
            const Milliseconds tile = timed([&] { mover.move(moves); });
            const Milliseconds snap = timed([&] { mover.move(std::span(&corner, 1)); });
            if (i >= 0) {
                bare.tile.push_back(tile);
                bare.snap.push_back(snap);
            }
        }
    }
    add(report, times, "the operation", tilingBudget(times));
    add(report, bare, "bare messages and a fence");
    report.note("Round trips: " + std::to_string(snapRoundTrips) + " for a snap, " +
                std::to_string(tileRoundTrips) + " for a tiling. The operation takes " +
                number(median(times.snap) / median(bare.snap)) + " × and " +
                number(median(times.tile) / median(bare.tile)) +
                " × what the window manager takes for the bare messages.");
}

Times measureKeyPresses() {
    PrivateDesktop desktop;
    desktop.startWindowManager("openbox");
    auto order = startClocks(desktop);
    desktop::Program program(desktop);
    program.change({{std::string(preference::tilingEnabled), true},
                    {std::string(preference::ignoreSmall), false},
                    {std::string(preference::maxTiles), static_cast<double>(windowCount)}});
    program.start();
    FrameObserver observer(desktop.display());
    for (const xcb_window_t window : order) {
        observer.watch(window);
        desktop.windows().activate(window);
    }
    std::reverse(order.begin(), order.end());  // now front-most first

    Contender snaps("snap", desktop, program.process(), {Key::leftControl, Key::leftAlt}, {Key::i});
    Contender tiles("tile", desktop, program.process(),
                    {Key::leftControl, Key::leftAlt, Key::leftSuper}, {Key::t});
    const auto timed = [&](Contender& contender, const std::vector<ExpectedFrame>& expected) {
        contender.prepare();
        program.waitUntilIdle();
        const Settling settling = observer.measure([&] { contender.start(0); }, expected);
        contender.finish(0);
        if (!settling.exact) {
            throw std::runtime_error("after \"" + contender.name() +
                                     "\" a window is not in its frame");
        }
        return settling.time;
    };
    const auto frames = tiledFrames(0.6);
    const Rect corner = placeUnit({0.5, 0, 0.5, 0.5}, area, gap);
    const Frame topRight{static_cast<int>(corner.x), static_cast<int>(corner.y),
                         static_cast<int>(corner.width), static_cast<int>(corner.height)};
    Times times;
    for (int i = 0; i <= rounds; ++i) {
        // The window at the back becomes the master, so that every window has to move.
        std::rotate(order.begin(), order.end() - 1, order.end());
        desktop.windows().activate(order.front());
        std::vector<ExpectedFrame> expected;
        for (std::size_t j = 0; j < windowCount; ++j) {
            expected.push_back({order[j], frames[j]});
        }
        const Milliseconds tile = timed(tiles, expected);
        const Milliseconds snap = timed(snaps, {{order.front(), topRight}});
        if (i > 0) {
            times.tile.push_back(tile);
            times.snap.push_back(snap);
        }
    }
    return times;
}

}  // namespace

void measureTiling(Report& report) {
    report.section("Tiling eight windows");
    measureOperations(report);
    const Times pressed = measureKeyPresses();
    add(report, pressed, "from the key press", tilingBudget(pressed));
}

}  // namespace tessellon::benchmarks
