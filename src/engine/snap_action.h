// The places a window can be sent to. One table says what each is called, where it is and in which
// section the user finds it; shortcuts, menus and settings all read it.
#pragma once

#include "base/geometry.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace tessellon {

/// The order of the cases is the order in which they are listed everywhere.
enum class SnapAction : std::uint8_t {
    leftHalf,
    rightHalf,
    topHalf,
    bottomHalf,
    topLeft,
    topRight,
    bottomLeft,
    bottomRight,
    leftThird,
    centerThird,
    rightThird,
    leftTwoThirds,
    rightTwoThirds,
    maximize,
    almostMaximize,
    center,
    restore,
    nextDisplay,
    previousDisplay,
};

enum class SnapActionGroup : std::uint8_t { halves, quarters, thirds, others };

struct SnapActionRow {
    SnapAction action;
    /// What is stored where an action is stored; never shown, never changed.
    std::string_view rawValue;
    std::string_view title;
    SnapActionGroup group;
    /// Where the action puts a window when a display is 1 × 1 with y down; nothing for the actions
    /// whose place depends on more than that area.
    std::optional<Rect> unitRect;
};

namespace snap_action_detail {
inline constexpr double third = 1.0 / 3.0;
inline constexpr double twoThirds = 2.0 / 3.0;
}  // namespace snap_action_detail

// clang-format off
inline constexpr std::array<SnapActionRow, 19> snapActionTable{{
    {SnapAction::leftHalf, "leftHalf", "Left Half", SnapActionGroup::halves, Rect{0, 0, 0.5, 1}},
    {SnapAction::rightHalf, "rightHalf", "Right Half", SnapActionGroup::halves, Rect{0.5, 0, 0.5, 1}},
    {SnapAction::topHalf, "topHalf", "Top Half", SnapActionGroup::halves, Rect{0, 0, 1, 0.5}},
    {SnapAction::bottomHalf, "bottomHalf", "Bottom Half", SnapActionGroup::halves, Rect{0, 0.5, 1, 0.5}},
    {SnapAction::topLeft, "topLeft", "Top Left", SnapActionGroup::quarters, Rect{0, 0, 0.5, 0.5}},
    {SnapAction::topRight, "topRight", "Top Right", SnapActionGroup::quarters, Rect{0.5, 0, 0.5, 0.5}},
    {SnapAction::bottomLeft, "bottomLeft", "Bottom Left", SnapActionGroup::quarters, Rect{0, 0.5, 0.5, 0.5}},
    {SnapAction::bottomRight, "bottomRight", "Bottom Right", SnapActionGroup::quarters, Rect{0.5, 0.5, 0.5, 0.5}},
    {SnapAction::leftThird, "leftThird", "Left Third", SnapActionGroup::thirds,
     Rect{0, 0, snap_action_detail::third, 1}},
    {SnapAction::centerThird, "centerThird", "Center Third", SnapActionGroup::thirds,
     Rect{snap_action_detail::third, 0, snap_action_detail::third, 1}},
    {SnapAction::rightThird, "rightThird", "Right Third", SnapActionGroup::thirds,
     Rect{snap_action_detail::twoThirds, 0, snap_action_detail::third, 1}},
    {SnapAction::leftTwoThirds, "leftTwoThirds", "Left Two Thirds", SnapActionGroup::thirds,
     Rect{0, 0, snap_action_detail::twoThirds, 1}},
    {SnapAction::rightTwoThirds, "rightTwoThirds", "Right Two Thirds", SnapActionGroup::thirds,
     Rect{snap_action_detail::third, 0, snap_action_detail::twoThirds, 1}},
    {SnapAction::maximize, "maximize", "Maximize", SnapActionGroup::others, Rect{0, 0, 1, 1}},
    {SnapAction::almostMaximize, "almostMaximize", "Almost Maximize", SnapActionGroup::others, std::nullopt},
    {SnapAction::center, "center", "Center", SnapActionGroup::others, std::nullopt},
    {SnapAction::restore, "restore", "Restore", SnapActionGroup::others, std::nullopt},
    {SnapAction::nextDisplay, "nextDisplay", "Next Display", SnapActionGroup::others, std::nullopt},
    {SnapAction::previousDisplay, "previousDisplay", "Previous Display", SnapActionGroup::others, std::nullopt},
}};
// clang-format on

/// Every action, in order.
inline constexpr auto allSnapActions = [] {
    std::array<SnapAction, snapActionTable.size()> all{};
    for (std::size_t i = 0; i < all.size(); ++i) {
        all[i] = snapActionTable[i].action;
    }
    return all;
}();

/// The sections in which the actions are listed: halves, quarters, thirds, others.
inline constexpr std::array<std::span<const SnapAction>, 4> actionGroups{
    std::span(allSnapActions).subspan(0, 4),
    std::span(allSnapActions).subspan(4, 4),
    std::span(allSnapActions).subspan(8, 5),
    std::span(allSnapActions).subspan(13, 6),
};

constexpr const SnapActionRow& snapActionRow(SnapAction action) {
    return snapActionTable[static_cast<std::size_t>(action)];
}
constexpr std::string_view rawValue(SnapAction action) {
    return snapActionRow(action).rawValue;
}
constexpr std::string_view title(SnapAction action) {
    return snapActionRow(action).title;
}
constexpr std::optional<Rect> unitRect(SnapAction action) {
    return snapActionRow(action).unitRect;
}
constexpr SnapActionGroup group(SnapAction action) {
    return snapActionRow(action).group;
}

/// The action that is stored under this name; nothing for any other text.
std::optional<SnapAction> snapActionFromRawValue(std::string_view rawValue);

/// What asking for `requested` again means after `last`: the next size of the cycle that
/// `requested` begins. Nothing when `requested` begins none or `last` is not part of it.
std::optional<SnapAction> cycleSuccessor(SnapAction last, SnapAction requested);

}  // namespace tessellon
