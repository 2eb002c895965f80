// The widget beneath all of the program's own borderless panels: above every program's windows,
// unknown to the window manager, never active.
#pragma once

#include "base/geometry.h"
#include "base/token.h"
#include "platform/compositing.h"
#include "platform/panel.h"

#include <QWidget>
#include <memory>

namespace tessellon {

/// Whether the pointer reaches a panel or what is below it.
enum class PanelInput { clickThrough, takesClicks };

class PanelWindow : public QWidget {
  public:
    /// The compositing must outlive the window's use.
    PanelWindow(PanelLevel level, PanelInput input, Compositing& compositing);

    PanelLevel level() const { return level_; }

    /// In screen coordinates: device pixels, bottom-left origin, y up.
    const Rect& screenFrame() const { return frame_; }
    /// A visible panel is painted anew at once.
    void setScreenFrame(const Rect& frame);

    /// Shows the panel in front of those of its level and behind those of higher ones.
    void orderFront();
    void orderOut() { hide(); }

  protected:
    /// What the panel is drawn onto: with a compositor it may be translucent, without one every
    /// pixel has to be opaque or cut out by the mask.
    enum class Backdrop { translucent, opaque };
    Backdrop backdrop() const { return backdrop_; }

    /// Called before every show and after every change of the frame or the backdrop, with the
    /// backdrop known: the place to set or clear the mask.
    virtual void updateShape() {}

  private:
    Backdrop currentBackdrop() const;
    void onCompositingChanged();
    void prepareNativeWindow();
    void raiseInLevel();

    PanelLevel level_;
    Compositing& compositing_;
    Rect frame_;
    Backdrop backdrop_ = Backdrop::translucent;
    WId prepared_ = 0;
    Token compositingChanged_;
};

/// Takes a panel off the screen at once and deletes it when the event that is being handled, which
/// may be one of its own, is over.
struct PanelWindowCloser {
    void operator()(PanelWindow* window) const {
        window->hide();
        window->deleteLater();
    }
};

template <typename Window = PanelWindow>
using PanelWindowPointer = std::unique_ptr<Window, PanelWindowCloser>;

}  // namespace tessellon
