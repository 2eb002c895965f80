// The port for the program's own borderless panels, as the features that show them know them. What
// is drawn in a panel is the business of the views.
//
// Frames are in screen coordinates: origin at the bottom left of the primary display, y up, in
// points (device pixels on X11).
#pragma once

#include "base/geometry.h"
#include "base/signal.h"

namespace tessellon {

/// Panels of a higher level are in front of those of a lower one; all are in front of every
/// program's windows.
enum class PanelLevel : int { grid = 2, preview = 3, modal = 8, popUpMenu = 101 };

/// Shown on every workspace, never part of task bars or window lists, never active. Destroying a
/// panel closes it.
class Panel {
  public:
    virtual ~Panel() = default;

    virtual Rect frame() const = 0;
    virtual void setFrame(const Rect& frame) = 0;

    virtual bool isVisible() const = 0;
    /// Shows it in front of everything of its level, whatever program is active.
    virtual void orderFrontRegardless() = 0;
    /// Hides it; what it needs to be shown again is kept.
    virtual void orderOut() = 0;
};

/// A panel that can take the keyboard. The program in front stays in front, with its window active.
class KeyPanel : public Panel {
  public:
    /// Shows it in front and gives it the keyboard: the next key that is typed is the panel's.
    virtual void makeKeyAndOrderFront() = 0;

    /// Emitted when the panel has lost the keyboard while it was shown: the user pressed a button
    /// outside of it, another window was activated, or the keyboard is not to be had.
    const Signal<>& resignedKey() const { return resignedKey_; }

  protected:
    KeyPanel() = default;
    Signal<> resignedKey_;
};

}  // namespace tessellon
