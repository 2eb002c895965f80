#include "engine/snap_action.h"

#include <algorithm>

namespace tessellon {
namespace {

using Cycle = std::array<SnapAction, 3>;

constexpr std::array<Cycle, 2> cycles{{
    {SnapAction::leftHalf, SnapAction::leftThird, SnapAction::leftTwoThirds},
    {SnapAction::rightHalf, SnapAction::rightThird, SnapAction::rightTwoThirds},
}};

constexpr bool rowsStandAtTheirAction() {
    for (std::size_t i = 0; i < snapActionTable.size(); ++i) {
        if (static_cast<std::size_t>(snapActionTable[i].action) != i) {
            return false;
        }
    }
    return true;
}

constexpr bool groupsAreWhole() {
    std::size_t listed = 0;
    for (std::size_t i = 0; i < actionGroups.size(); ++i) {
        for (const SnapAction action : actionGroups[i]) {
            if (static_cast<std::size_t>(group(action)) != i) {
                return false;
            }
            ++listed;
        }
    }
    return listed == snapActionTable.size();
}

static_assert(rowsStandAtTheirAction());
static_assert(groupsAreWhole());

}  // namespace

std::optional<SnapAction> snapActionFromRawValue(std::string_view rawValue) {
    const auto row = std::find_if(
        snapActionTable.begin(), snapActionTable.end(),
        [rawValue](const SnapActionRow& candidate) { return candidate.rawValue == rawValue; });
    if (row == snapActionTable.end()) {
        return std::nullopt;
    }
    return row->action;
}

std::optional<SnapAction> cycleSuccessor(SnapAction last, SnapAction requested) {
    for (const Cycle& cycle : cycles) {
        if (cycle.front() != requested) {
            continue;
        }
        const auto at = std::find(cycle.begin(), cycle.end(), last);
        if (at == cycle.end()) {
            return std::nullopt;
        }
        return at + 1 == cycle.end() ? cycle.front() : *(at + 1);
    }
    return std::nullopt;
}

}  // namespace tessellon
