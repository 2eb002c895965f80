#include "tiled_clocks.h"

#include "engine/placement.h"

#include <cmath>

namespace tessellon::benchmarks {
namespace {

constexpr Rect area{8, 8, 1904, 1064};
constexpr double gap = 8;

desktop::Frame frameOf(const Rect& unit) {
    const Rect frame = placeUnit(unit, area, gap);
    const auto whole = [](double value) { return static_cast<int>(std::lround(value)); };
    return {whole(frame.x), whole(frame.y), whole(frame.width), whole(frame.height)};
}

}  // namespace

std::vector<xcb_window_t> startClocks(desktop::PrivateDesktop& desktop) {
    std::vector<xcb_window_t> windows;
    for (std::size_t i = 0; i < mostTiled; ++i) {
        windows.push_back(
            desktop.startWithWindow({"xclock", "-update", "3600", "-xrm", "XClock.input: True"}));
    }
    return windows;
}

std::vector<desktop::Frame> tiledFrames(std::size_t count, double masterShare) {
    const auto rows = static_cast<double>(count - 1);
    std::vector<desktop::Frame> frames;
    for (std::size_t i = 0; i < count; ++i) {
        frames.push_back(frameOf(i == 0 ? Rect{0, 0, masterShare, 1}
                                        : Rect{masterShare, static_cast<double>(i - 1) / rows,
                                               1 - masterShare, 1 / rows}));
    }
    return frames;
}

desktop::Frame topRightFrame() {
    return frameOf({0.5, 0, 0.5, 0.5});
}

}  // namespace tessellon::benchmarks
