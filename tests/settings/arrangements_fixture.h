// Saved arrangements, as the tests of their page use them.
#pragma once

#include "arrangements/arrangement_store.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessellon {

/// With a window of each of the applications, one after the other.
inline Arrangement arrangementOf(std::string name, const std::vector<std::string>& applications) {
    Arrangement arrangement{Uuid::random(), std::move(name), {}, std::nullopt};
    for (const auto& application : applications) {
        arrangement.placements.push_back({application, "Document", 0, {0, 0, 0.5, 1}});
    }
    return arrangement;
}

}  // namespace tessellon
