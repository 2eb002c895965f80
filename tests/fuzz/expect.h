// How fuzz targets say that something must hold.
#pragma once

#include <cstdlib>

namespace tessellon {

/// Ends the process, which the fuzzer takes for a finding, unless it holds.
inline void expect(bool holds) {
    if (!holds) {
        std::abort();
    }
}

}  // namespace tessellon
