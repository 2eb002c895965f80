// Eight windows brought into a tiling, beside one window that is snapped: in this process, where
// only the operation itself counts, and by key press, where the programs' own work counts too.
#include "app/preferences.h"
#include "contenders.h"
#include "engine/placement.h"
#include "engine/window_engine.h"
#include "frame_observer.h"
#include "harness/program.h"
#include "real_desktop.h"
#include "sections.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessellon::benchmarks {
namespace {

using desktop::Frame;
using desktop::Key;
using desktop::PrivateDesktop;

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

    void addTo(Report& report, const std::string& how) const {
        const double ratio = median(tile) / median(snap);
        report.add(timeRow("snapping one window, " + how, snap));
        report.add(timeRow("tiling 8 windows, " + how, tile, number(ratio) + " × one snap",
                           Budget{"≤ " + number(mostOfSnap, 0) + " ×", ratio <= mostOfSnap}));
    }
};

Times measureOperations() {
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
    constexpr std::array<double, 2> masterShares{0.5, 0.6};
    Times times;
    for (int i = 0; i < 2 * rounds; ++i) {
        const double share = masterShares[static_cast<std::size_t>(i) % masterShares.size()];
        real.defaults().setDouble(preference::masterRatio, 100 * share);
        const Milliseconds tile = timed([&] { engine.tile(); });
        const auto frames = tiledFrames(share);
        for (const auto& [window, frame] : engine.windows().orderedVisibleWindows()) {
            const auto here = [&](const Frame& tileFrame) {
                return Rect{1.0 * tileFrame.x, 1.0 * tileFrame.y, 1.0 * tileFrame.width,
                            1.0 * tileFrame.height} == frame;
            };
            if (std::none_of(frames.begin(), frames.end(), here)) {
                throw std::runtime_error("a window is in no tile");
            }
        }
        const Milliseconds snap = timed([&] { engine.snap(SnapAction::topRight); });
        if (i > 0) {
            times.tile.push_back(tile);
            times.snap.push_back(snap);
        }
    }
    return times;
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

    KeyContender snaps("snap", desktop, program.process(), {Key::leftControl, Key::leftAlt},
                       {Key::i});
    KeyContender tiles("tile", desktop, program.process(),
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
    measureOperations().addTo(report, "the operation");
    measureKeyPresses().addTo(report, "from the key press");
}

}  // namespace tessellon::benchmarks
