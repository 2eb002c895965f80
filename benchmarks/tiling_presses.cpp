#include "app/preferences.h"
#include "contenders.h"
#include "frame_observer.h"
#include "harness/program.h"
#include "tiled_clocks.h"
#include "tiling_contests.h"

#include <algorithm>
#include <stdexcept>

namespace tessellon::benchmarks {
namespace {

using desktop::Key;
using desktop::PrivateDesktop;

/// The processes that show these windows.
std::vector<pid_t> ownersOf(PrivateDesktop& desktop, const std::vector<xcb_window_t>& windows) {
    std::vector<pid_t> owners;
    for (const xcb_window_t window : windows) {
        const auto process = desktop.x().values(window, "_NET_WM_PID");
        if (!process.empty()) {
            owners.push_back(static_cast<pid_t>(process.front()));
        }
    }
    return owners;
}

}  // namespace

TilingPresses measureTilingPresses(const std::string& windowManager, int rounds) {
    PrivateDesktop desktop;
    desktop.startWindowManager(windowManager);
    auto order = startClocks(desktop);
    desktop::Program program(desktop);
    program.change({{std::string(preference::tilingEnabled), true},
                    {std::string(preference::ignoreSmall), false},
                    {std::string(preference::maxTiles), static_cast<double>(mostTiled)}});
    program.start();
    FrameObserver observer(desktop.display());
    for (const xcb_window_t window : order) {
        observer.watch(window);
        desktop.windows().activate(window);
    }
    std::reverse(order.begin(), order.end());  // now front-most first

    TilingPresses result;
    for (auto* const processor : {&result.processorOfSnap, &result.processorOfTile}) {
        processor->add("tessellon", {program.process().pid()});
        processor->add("window manager", {desktop.windowManagerProcess().pid()});
        processor->add("X server", {desktop.serverProcess().pid()});
        processor->add("the windows' programs", ownersOf(desktop, order));
    }
    Contender snaps("snap", desktop, program.process(), {Key::leftControl, Key::leftAlt}, {Key::i});
    Contender tiles("tile", desktop, program.process(),
                    {Key::leftControl, Key::leftAlt, Key::leftSuper}, {Key::t});
    const auto timed = [&](Contender& contender, const std::vector<ExpectedFrame>& expected,
                           ProcessorTime& processor, bool counts) {
        contender.prepare();
        program.waitUntilIdle();
        if (counts) {
            processor.start();
        }
        const Settling settling = observer.measure([&] { contender.start(0); }, expected);
        if (counts) {
            waitUntilQuiet(desktop.windowManagerProcess().pid());
            program.waitUntilIdle();
            processor.stop();
        }
        contender.finish(0);
        if (!settling.exact) {
            throw std::runtime_error("after \"" + contender.name() +
                                     "\" a window is not in its frame on " + windowManager);
        }
        return settling.time;
    };
    const auto frames = tiledFrames(mostTiled, 0.6);
    for (int i = -1; i < rounds; ++i) {
        // The window at the back becomes the master, so that every window has to move.
        std::rotate(order.begin(), order.end() - 1, order.end());
        desktop.windows().activate(order.front());
        std::vector<ExpectedFrame> expected;
        for (std::size_t j = 0; j < mostTiled; ++j) {
            expected.push_back({order[j], frames[j]});
        }
        const bool counts = i >= 0;
        const auto tile = timed(tiles, expected, result.processorOfTile, counts);
        const auto snap =
            timed(snaps, {{order.front(), topRightFrame()}}, result.processorOfSnap, counts);
        if (counts) {
            result.tile.push_back(tile);
            result.snap.push_back(snap);
        }
    }
    return result;
}

}  // namespace tessellon::benchmarks
