// A look at the bytes of a property list before the parser sees them. The parser recurses once for
// each level, copies what a binary list refers to twice, and takes quadratic time over texts full
// of entities: a damaged or malicious file must not take the program down or keep it busy.
#pragma once

#include <cstddef>
#include <string_view>

namespace tessellon {

/// Larger files are not even opened for reading; real ones have some kilobytes.
inline constexpr std::size_t maxPropertyListBytes = std::size_t{16} * 1024 * 1024;

/// Levels of dictionaries and arrays, the outermost included.
inline constexpr int maxPropertyListDepth = 64;

/// Values altogether, keys included and values that are referred to twice counted twice.
inline constexpr std::size_t maxPropertyListValues = 200'000;

/// True when the bytes, XML or binary ("bplist00"), can be parsed in reasonable time and stack. It
/// does not say that they are a valid property list.
bool isWithinPropertyListLimits(std::string_view bytes);

}  // namespace tessellon
