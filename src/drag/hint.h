// One zone of a screen's grid.
#pragma once

#include "base/geometry.h"
#include "engine/snap_action.h"

namespace tessellon {

struct Hint {
    /// Its place in the list of its screen.
    int id = 0;
    /// Where it is drawn: points from the top left corner of the screen's visible frame, y down.
    Rect rect;
    /// What dropping a window here does.
    SnapAction action = SnapAction::center;
    bool operator==(const Hint&) const = default;
};

}  // namespace tessellon
