// Text as the settings store it: data under a key.
#pragma once

#include "platform/user_defaults.h"

#include <string>
#include <string_view>

namespace tessellon {

inline PropertyData dataOf(std::string_view text) {
    return {text.begin(), text.end()};
}

inline std::string textOf(const PropertyData& data) {
    return {data.begin(), data.end()};
}

/// What is stored under a key; "(nothing)" when that is no data.
inline std::string storedText(const UserDefaults& defaults, std::string_view key) {
    const auto data = defaults.dataForKey(key);
    return data ? textOf(*data) : "(nothing)";
}

}  // namespace tessellon
