// The stored form of the restore records.
#pragma once

#include "engine/restore_memory.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tessellon {

/// A JSON array of records, oldest first; nothing when a frame is not finite or a
/// text is not UTF-8.
std::optional<std::vector<std::uint8_t>> encodeMemories(std::span<const Memory> records);

/// Nothing unless every record is whole. Of records with the same id the first counts.
std::optional<std::vector<Memory>> decodeMemories(std::span<const std::uint8_t> json);

}  // namespace tessellon
