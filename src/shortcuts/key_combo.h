// One key combination, as shortcuts and arrangements store it.
#pragma once

#include "base/json.h"
#include "base/modifier_flag.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tessellon {

struct KeyCombo {
    /// Virtual key code: names a physical key by its place. Negative in stored data where the user
    /// cleared the shortcut.
    std::int64_t keyCode = 0;
    /// Bits of modifier_flag.
    std::uint64_t mods = 0;
    /// The label shown for the key, such as "←", "T" or "F5".
    std::string key;

    bool operator==(const KeyCombo&) const = default;
};

/// True when two combinations are the same keys to press; the label takes no part.
bool sameShortcut(const KeyCombo& a, const KeyCombo& b);

/// Reads {"keyCode", "mods", "key"}; nothing when one of them is missing or mistyped.
std::optional<KeyCombo> keyComboFromJson(const Json& value);
void writeKeyCombo(JsonWriter& writer, const KeyCombo& combo);

}  // namespace tessellon
