// A layout of windows that the user saved under a name.
#pragma once

#include "base/geometry.h"
#include "base/uuid.h"
#include "shortcuts/key_combo.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessellon {

struct Arrangement {
    /// Where one window was.
    struct Placement {
        /// Of the window's application.
        std::string bundleID;
        /// "" when the window had none.
        std::string title;
        /// Index in the order of the displays, from left to right.
        std::int64_t screen = 0;
        /// The frame as fractions of the display's usable area, from its top left corner. Not
        /// checked when read from storage.
        Rect unit;
        bool operator==(const Placement&) const = default;
    };

    /// Never changes; shortcuts refer to it.
    Uuid id;
    /// For the user; several arrangements may have the same.
    std::string name;
    /// Front-most window first.
    std::vector<Placement> placements;
    /// The shortcut that applies the arrangement.
    std::optional<KeyCombo> combo;
    bool operator==(const Arrangement&) const = default;
};

}  // namespace tessellon
