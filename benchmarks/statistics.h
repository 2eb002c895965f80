// The two numbers that a list of measured times is reduced to.
#pragma once

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <vector>

namespace tessellon::benchmarks {

using Milliseconds = std::chrono::duration<double, std::milli>;
using Clock = std::chrono::steady_clock;

/// The value below which this share of the samples lies (nearest rank). There must be a sample.
inline Milliseconds percentile(std::vector<Milliseconds> samples, double share) {
    const auto rank =
        static_cast<std::size_t>(std::ceil(share * static_cast<double>(samples.size())));
    const auto at =
        samples.begin() + static_cast<std::ptrdiff_t>(std::max<std::size_t>(rank, 1) - 1);
    std::nth_element(samples.begin(), at, samples.end());
    return *at;
}

inline Milliseconds median(const std::vector<Milliseconds>& samples) {
    return percentile(samples, 0.5);
}

}  // namespace tessellon::benchmarks
