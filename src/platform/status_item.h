// The port for the program's item in the tray of the desktop's panel.
#pragma once

#include "base/geometry.h"
#include "base/signal.h"

#include <optional>

namespace tessellon {

/// Always there for its owner, whether or not the desktop has a tray at the moment: it is shown as
/// soon as there is one, and again after the tray was started anew.
class StatusItem {
  public:
    virtual ~StatusItem() = default;

    /// Where the item is, in screen coordinates (bottom-left origin of the primary display, y up);
    /// nothing while it is not shown, or when the tray does not tell.
    virtual std::optional<Rect> frame() const = 0;

    /// Shows that what the item opens is open, as far as the tray can show that.
    virtual void setHighlighted(bool highlighted) = 0;

    /// Emitted when the user has pressed the item, with whatever button.
    const Signal<>& activated() const { return activated_; }

  protected:
    StatusItem() = default;
    Signal<> activated_;
};

}  // namespace tessellon
