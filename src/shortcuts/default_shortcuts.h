// The shortcuts that every user starts with. They are never stored; only what differs from them is.
#pragma once

#include "shortcuts/hotkey_target.h"
#include "shortcuts/key_combo.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace tessellon {

struct DefaultShortcut {
    SnapAction action;
    std::int64_t keyCode;
    std::string_view key;
    std::uint64_t mods;
};

namespace default_shortcut_detail {
inline constexpr auto controlOption = modifier_flag::control | modifier_flag::option;
inline constexpr auto withShift = controlOption | modifier_flag::shift;
inline constexpr auto withCommand = controlOption | modifier_flag::command;
}  // namespace default_shortcut_detail

/// One row for each action, in the order of the actions.
inline constexpr std::array<DefaultShortcut, allSnapActions.size()> defaultShortcuts{{
    {SnapAction::leftHalf, 123, "←", default_shortcut_detail::controlOption},
    {SnapAction::rightHalf, 124, "→", default_shortcut_detail::controlOption},
    {SnapAction::topHalf, 126, "↑", default_shortcut_detail::controlOption},
    {SnapAction::bottomHalf, 125, "↓", default_shortcut_detail::controlOption},
    {SnapAction::topLeft, 32, "U", default_shortcut_detail::controlOption},
    {SnapAction::topRight, 34, "I", default_shortcut_detail::controlOption},
    {SnapAction::bottomLeft, 38, "J", default_shortcut_detail::controlOption},
    {SnapAction::bottomRight, 40, "K", default_shortcut_detail::controlOption},
    {SnapAction::leftThird, 2, "D", default_shortcut_detail::controlOption},
    {SnapAction::centerThird, 3, "F", default_shortcut_detail::controlOption},
    {SnapAction::rightThird, 5, "G", default_shortcut_detail::controlOption},
    {SnapAction::leftTwoThirds, 14, "E", default_shortcut_detail::controlOption},
    {SnapAction::rightTwoThirds, 17, "T", default_shortcut_detail::controlOption},
    {SnapAction::maximize, 36, "↩", default_shortcut_detail::controlOption},
    {SnapAction::almostMaximize, 36, "↩", default_shortcut_detail::withShift},
    {SnapAction::center, 8, "C", default_shortcut_detail::controlOption},
    {SnapAction::restore, 51, "⌫", default_shortcut_detail::controlOption},
    {SnapAction::nextDisplay, 124, "→", default_shortcut_detail::withCommand},
    {SnapAction::previousDisplay, 123, "←", default_shortcut_detail::withCommand},
}};

/// The built-in shortcut of a target; nothing for arrangements.
std::optional<KeyCombo> defaultCombo(const HotkeyTarget& target);

/// The built-in shortcut with ⌘ in place of ⌥, for desktops that hold those with ⌃⌥; nothing for
/// targets whose built-in shortcut is held with other modifiers than ⌃⌥ or ⌃⌥⇧, or that have none.
std::optional<KeyCombo> controlCommandCombo(const HotkeyTarget& target);

}  // namespace tessellon
