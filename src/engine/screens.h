// The screens as the engine sees them: in the accessibility space, in the user's order, and less
// the gap at their edges. Nothing is kept between operations.
#pragma once

#include "base/geometry.h"
#include "base/token.h"
#include "platform/displays.h"
#include "platform/user_defaults.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tessellon {

/// The name under which a display's own settings are stored: its UUID, else its localized name.
std::string displayIdentifier(const Screen& screen);

/// The place of `screen` in `screens`, compared by identity; nothing when it is not among them.
std::optional<std::size_t> indexOfScreen(std::span<const Screen> screens, const Screen& screen);

class Screens {
  public:
    /// Both must outlive the screens.
    Screens(const Displays& displays, const UserDefaults& defaults);
    Screens(const Screens&) = delete;
    Screens& operator=(const Screens&) = delete;

    /// While the token lives, every question is answered from one look at the displays, taken at
    /// the first of them, instead of a look each: what docks reserve is gathered from all windows.
    /// Tokens may nest; the outermost counts. Must not outlive this object.
    Token beginReads() const;

    /// Flips a rectangle between screen coordinates (origin at the bottom left of the primary
    /// display, y up) and the accessibility space. Its own inverse.
    Rect toAccessibilityRect(const Rect& rect) const;

    /// The same for a point.
    Point toAccessibilityPoint(Point point) const;

    /// The screen that shows most of a rectangle of the accessibility space; the main screen when
    /// none shows any of it; nothing without screens.
    std::optional<Screen> screenFor(const Rect& rect) const;

    /// The first screen that contains a point of the accessibility space, or nothing.
    std::optional<Screen> screenAtPoint(Point point) const;

    /// The screen with the keyboard, else the first one, else nothing.
    std::optional<Screen> mainScreen() const;

    /// The part of a screen that snapped windows share, in the accessibility space: the visible
    /// frame less the edge gap, or all of it when the gap does not fit.
    Rect usableFrame(const Screen& screen) const;

    /// All screens from left to right, those with the same left edge from top to bottom.
    std::vector<Screen> displayOrder() const;

  private:
    std::vector<Screen> current() const;

    const Displays& displays_;
    const UserDefaults& defaults_;
    mutable int operations_ = 0;
    mutable std::optional<std::vector<Screen>> look_;
};

}  // namespace tessellon
