#include "app/preferences.h"
#include "bare_mover.h"
#include "contenders.h"
#include "engine/window_engine.h"
#include "ports/real_desktop.h"
#include "tiled_clocks.h"
#include "tiling_contests.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessellon::benchmarks {
namespace {

using desktop::Frame;
using desktop::PrivateDesktop;
using desktop::RealDesktop;

struct Connection {
    xcb_connection_t* xcb = xcb_connect(nullptr, nullptr);
    Connection() = default;
    ~Connection() { xcb_disconnect(xcb); }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
};

std::vector<BareMove> bareMoves(std::span<const xcb_window_t> windows,
                                const std::vector<Frame>& frames) {
    std::vector<BareMove> moves;
    for (std::size_t i = 0; i < windows.size(); ++i) {
        const Frame& frame = frames[i];
        moves.push_back({windows[i], {frame.x, frame.y, frame.width, frame.height}});
    }
    return moves;
}

/// Whether as many windows as there are frames have one of them.
void checkTiled(WindowEngine& engine, const std::vector<Frame>& frames) {
    std::size_t tiled = 0;
    for (const auto& [window, frame] : engine.windows().orderedVisibleWindows()) {
        tiled += std::any_of(frames.begin(), frames.end(),
                             [&shown = frame](const Frame& tile) {
                                 return Rect{1.0 * tile.x, 1.0 * tile.y, 1.0 * tile.width,
                                             1.0 * tile.height} == shown;
                             })
                     ? 1U
                     : 0U;
    }
    if (tiled < frames.size()) {
        throw std::runtime_error("a window is in no tile");
    }
}

}  // namespace

TilingOperations measureTilingOperations(const std::string& windowManager, int rounds) {
    PrivateDesktop desktop;
    desktop.startWindowManager(windowManager);
    const auto windows = startClocks(desktop);
    desktop.windows().activate(windows.front());
    setenv("DISPLAY", desktop.display().c_str(), 1);
    RealDesktop real;
    real.defaults().setBool(preference::tilingEnabled, true);
    real.defaults().setBool(preference::ignoreSmall, false);
    WindowEngine engine(real.services());

    const auto timed = [&](std::vector<Milliseconds>& times, bool counts, const auto& operation) {
        const auto start = Clock::now();
        operation();
        const Milliseconds time = Clock::now() - start;
        if (counts) {
            times.push_back(time);
        }
        // The clients draw themselves after the operation.
        waitUntilQuiet(desktop.windowManagerProcess().pid());
    };
    const Connection connection;
    BareMover mover(connection.xcb);
    const BareMove corner{windows.front(), {964, 8, 948, 528}};
    TilingOperations result;
    for (int i = -1; i < rounds; ++i) {
        const bool counts = i >= 0;  // the first time does not
        for (const double share : {0.5, 0.6}) {
            real.defaults().setDouble(preference::masterRatio, 100 * share);
            for (const std::size_t count : tiledCounts) {
                real.defaults().setDouble(preference::maxTiles, static_cast<double>(count));
                const auto roundTrips = real.roundTrips();
                timed(result.operation[count], counts, [&] { engine.tile(); });
                if (counts) {
                    result.mostTileRoundTrips =
                        std::max(result.mostTileRoundTrips, real.roundTrips() - roundTrips);
                }
                checkTiled(engine, tiledFrames(count, share));
            }
            const auto roundTrips = real.roundTrips();
            timed(result.operation[1], counts, [&] { engine.snap(SnapAction::topRight); });
            if (counts) {
                result.mostSnapRoundTrips =
                    std::max(result.mostSnapRoundTrips, real.roundTrips() - roundTrips);
            }
        }
        for (const double share : {0.5, 0.6}) {
            for (const std::size_t count : tiledCounts) {
                const auto moves =
                    bareMoves(std::span(windows).first(count), tiledFrames(count, share));
                timed(result.bare[count], counts, [&] { mover.move(moves); });
            }
            timed(result.bare[1], counts, [&] { mover.move(std::span(&corner, 1)); });
        }
    }
    return result;
}

}  // namespace tessellon::benchmarks
