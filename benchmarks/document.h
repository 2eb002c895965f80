// The document about performance: explaining text with places that a run of the benchmark fills.
#pragma once

#include <map>
#include <string>

namespace tessellon::benchmarks {

/// The text with every {{name}} replaced by what the name stands for. Throws std::runtime_error
/// when something has no place or a place nothing, since the document would be incomplete.
std::string filled(const std::string& text, const std::map<std::string, std::string>& values);

/// The date, as people write it: "3 November 2026".
std::string today();

/// What matters of the machine: how many processors, and what else they had to do before the run.
std::string machine();

}  // namespace tessellon::benchmarks
