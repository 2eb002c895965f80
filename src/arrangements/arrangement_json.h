// The stored form of the arrangements.
#pragma once

#include "arrangements/arrangement.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tessellon {

/// A JSON array in the order of the list; nothing when a number is not finite or a text is not
/// valid UTF-8.
std::optional<std::vector<std::uint8_t>> encodeArrangements(
    std::span<const Arrangement> arrangements);

/// Nothing unless every arrangement is whole. Unknown keys are ignored.
std::optional<std::vector<Arrangement>> decodeArrangements(std::span<const std::uint8_t> json);

}  // namespace tessellon
