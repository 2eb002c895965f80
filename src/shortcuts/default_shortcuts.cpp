#include "shortcuts/default_shortcuts.h"

#include <string>

namespace tessellon {
namespace {

constexpr bool rowsFollowActions() {
    for (std::size_t i = 0; i < defaultShortcuts.size(); ++i) {
        if (defaultShortcuts[i].action != allSnapActions[i]) {
            return false;
        }
    }
    return true;
}
static_assert(rowsFollowActions());

}  // namespace

std::optional<KeyCombo> defaultCombo(const HotkeyTarget& target) {
    if (const auto* snap = std::get_if<HotkeyTarget::Snap>(&target.kind)) {
        const auto& row = defaultShortcuts[static_cast<std::size_t>(snap->action)];
        return KeyCombo{row.keyCode, row.mods, std::string(row.key)};
    }
    if (std::holds_alternative<HotkeyTarget::Tile>(target.kind)) {
        return KeyCombo{17, default_shortcut_detail::withCommand, "T"};
    }
    return std::nullopt;
}

std::optional<KeyCombo> controlCommandCombo(const HotkeyTarget& target) {
    auto combo = defaultCombo(target);
    if (!combo || (combo->mods != default_shortcut_detail::controlOption &&
                   combo->mods != default_shortcut_detail::withShift)) {
        return std::nullopt;
    }
    combo->mods = (combo->mods & ~modifier_flag::option) | modifier_flag::command;
    return combo;
}

}  // namespace tessellon
