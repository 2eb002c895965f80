// What a shortcut sets off, as a value that can be stored, compared and kept in a set.
#pragma once

#include "base/uuid.h"
#include "engine/snap_action.h"

#include <cstddef>
#include <functional>
#include <string>
#include <variant>

namespace tessellon {

struct HotkeyTarget {
    /// Snap the focused window.
    struct Snap {
        SnapAction action;
        bool operator==(const Snap&) const = default;
    };
    /// Apply a stored arrangement.
    struct Arrangement {
        Uuid id;
        bool operator==(const Arrangement&) const = default;
    };
    /// Tile a display.
    struct Tile {
        bool operator==(const Tile&) const = default;
    };

    static HotkeyTarget snap(SnapAction action) { return {Snap{action}}; }
    static HotkeyTarget arrangement(const Uuid& id) { return {Arrangement{id}}; }
    static HotkeyTarget tile() { return {Tile{}}; }

    std::variant<Snap, Arrangement, Tile> kind;

    bool operator==(const HotkeyTarget&) const = default;

    /// The text under which the target is stored: "snap.leftHalf", "arrangement." with the UUID in
    /// upper case, or "tile".
    std::string targetID() const;
};

}  // namespace tessellon

template <>
struct std::hash<tessellon::HotkeyTarget> {
    std::size_t operator()(const tessellon::HotkeyTarget& target) const noexcept;
};
