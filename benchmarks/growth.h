// How a measured time grows with the number of windows.
#pragma once

#include "statistics.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace tessellon::benchmarks {

/// In words, from the medians of the smallest and the largest number: what each further window
/// costs, and how many times longer ten times as many take.
std::string growth(const std::map<std::size_t, std::vector<Milliseconds>>& times);

}  // namespace tessellon::benchmarks
