// What it takes to bring several windows into a tiling, beside one window that is snapped: for the
// operation alone, and from a key press until the windows are there.
#pragma once

#include "processor_time.h"
#include "statistics.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tessellon::benchmarks {

/// By the number of windows; one is a snap.
using TimesByCount = std::map<std::size_t, std::vector<Milliseconds>>;

struct TilingOperations {
    /// Of the program's own adapters in this process, until it knows the new frames.
    TimesByCount operation;
    /// Of bare messages for the same windows, which are sent together, and one fence.
    TimesByCount bare;
    std::uint64_t mostSnapRoundTrips = 0;
    std::uint64_t mostTileRoundTrips = 0;
};
TilingOperations measureTilingOperations(const std::string& windowManager, int rounds);

struct TilingPresses {
    /// From the key press until all windows are in their frames.
    std::vector<Milliseconds> snap;
    std::vector<Milliseconds> tile;
    /// Until everybody has come to rest.
    ProcessorTime processorOfSnap;
    ProcessorTime processorOfTile;
};
TilingPresses measureTilingPresses(const std::string& windowManager, int rounds);

}  // namespace tessellon::benchmarks
