#include "engine/snap_action_names.h"

#include "base/text.h"

namespace tessellon {

std::string sentenceTitle(SnapAction action) {
    const auto full = title(action);
    return std::string(full.substr(0, 1)) + toLower(full.substr(1));
}

std::string shortTitle(SnapAction action) {
    switch (action) {
        case SnapAction::leftHalf:
            return "Left";
        case SnapAction::rightHalf:
            return "Right";
        case SnapAction::topHalf:
            return "Top";
        case SnapAction::bottomHalf:
            return "Bottom";
        case SnapAction::leftThird:
            return "Left ⅓";
        case SnapAction::centerThird:
            return "Center ⅓";
        case SnapAction::rightThird:
            return "Right ⅓";
        case SnapAction::leftTwoThirds:
            return "Left ⅔";
        case SnapAction::rightTwoThirds:
            return "Right ⅔";
        case SnapAction::almostMaximize:
            return "Almost max";
        case SnapAction::previousDisplay:
            return "Prev display";
        default:
            return sentenceTitle(action);
    }
}

}  // namespace tessellon
