// The windows that the benchmarks of tiling move, and where a tiling has them on an empty display
// of 1920 × 1080.
#pragma once

#include "harness/frame.h"
#include "harness/private_desktop.h"

#include <array>
#include <cstddef>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::benchmarks {

inline constexpr std::size_t mostTiled = 8;

/// How many windows are tiled, beside one that is snapped.
inline constexpr std::array<std::size_t, 3> tiledCounts{2, 4, mostTiled};

/// As many clocks as can be tiled; they take any size and draw little.
std::vector<xcb_window_t> startClocks(desktop::PrivateDesktop& desktop);

/// Where tiling puts the windows, the focused one first.
std::vector<desktop::Frame> tiledFrames(std::size_t count, double masterShare);

/// Where the snap to the top right puts a window.
desktop::Frame topRightFrame();

}  // namespace tessellon::benchmarks
