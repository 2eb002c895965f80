// Where the panel of the status item goes: beside the item, on the item's screen, clear of docks.
#pragma once

#include "base/geometry.h"
#include "engine/screens.h"
#include "platform/displays.h"

#include <optional>

namespace tessellon {

/// What the panel belongs to. Everything here is in screen coordinates (bottom-left origin of the
/// primary display, y up).
struct MenuAnchor {
    Rect place;
    /// What docks leave of the screen there, which the panel must not leave; empty without a
    /// screen.
    Rect visible;
};

/// The anchor at the item. Without its place it is at the pointer, and without that at the top
/// right corner of the main screen.
MenuAnchor menuAnchor(const Displays& displays, const Screens& screens,
                      const std::optional<Rect>& item, const std::optional<Point>& pointer);

/// The frame of a panel of this size below the anchor, above it where there is no room below. It
/// stays within the visible area; its top right part does where it is too large.
Rect menuPanelFrame(const MenuAnchor& anchor, Size panel);

}  // namespace tessellon
