// Where the panel of the status item goes: beside the item, on the item's screen, clear of docks.
#pragma once

#include "base/geometry.h"
#include "engine/screens.h"
#include "platform/displays.h"

#include <optional>

namespace tessellon {

/// The frame of a panel of this size below the item, above it where there is no room below. Without
/// the item's place it is the pointer's, and without that the top right corner of the main screen.
/// It stays within what docks leave of that screen; its top right part does where it is too large.
/// Everything is in screen coordinates (bottom-left origin of the primary display, y up).
Rect menuPanelFrame(const Displays& displays, const Screens& screens,
                    const std::optional<Rect>& item, const std::optional<Point>& pointer,
                    Size panel);

}  // namespace tessellon
