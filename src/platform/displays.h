// The port through which the screens are known.
//
// Screen rectangles have their origin at the bottom left of the primary display and y growing
// upward, in points; the engine flips them into the accessibility space in one place.
#pragma once

#include "base/geometry.h"
#include "base/signal.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessellon {

struct Screen {
    /// Identity while the configuration of the displays stays as it is.
    std::uint64_t id = 0;
    Rect frame;
    /// The frame less what docks and panels reserve.
    Rect visibleFrame;
    /// A UUID in canonical text form that names the same monitor again after a restart; nothing
    /// where the hardware tells nothing about itself.
    std::optional<std::string> uuid;
    std::string localizedName;
    /// How many pixels of the panel, across and down, show one point; below 1 where the desktop is
    /// larger than what the panel can show.
    Size backingScale{1, 1};
    bool operator==(const Screen&) const = default;
};

class Displays {
  public:
    virtual ~Displays() = default;

    /// All screens, the primary display first. Empty while no monitor is connected.
    virtual std::vector<Screen> screens() const = 0;

    /// The screen with the window that has the keyboard, else the primary one, else nothing.
    virtual std::optional<Screen> mainScreen() const = 0;

    /// Emitted after screens were added, removed or changed.
    const Signal<>& changed() const { return changed_; }

  protected:
    Displays() = default;
    Signal<> changed_;
};

}  // namespace tessellon
