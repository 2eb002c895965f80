// Restore records like those of a user with many windows, for the benchmarks that read, write and
// search them.
#pragma once

#include "base/uuid.h"
#include "engine/restore_memory.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tessellon {

inline constexpr const char* sampleBundleIdentifier = "org.example.Editor";

/// Records of one application; no two have the same title or nearly the same frame.
inline std::vector<Memory> sampleRecords(std::size_t count) {
    std::vector<Memory> records;
    records.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        const auto place = 10.0 * static_cast<double>(i);
        const auto number = std::to_string(i);
        records.push_back({Uuid::fromName("sample record " + number),
                           sampleBundleIdentifier,
                           "Quarterly report, chapter " + number + " – Editor",
                           {place, place, 900, 700},
                           {place + 8, 33, 948, 1039}});
    }
    return records;
}

}  // namespace tessellon
