// The Panel port on a PanelWindow, for every feature that has panels.
#pragma once

#include "platform/panel.h"
#include "platform/qt/panel_window.h"

#include <utility>

namespace tessellon {

/// Implements the functions of Panel; Interface is Panel or an extension of it, Window the widget
/// that draws the panel.
template <typename Interface, typename Window = PanelWindow>
class QtPanel : public Interface {
  public:
    Rect frame() const override { return window_->screenFrame(); }
    void setFrame(const Rect& frame) override { window_->setScreenFrame(frame); }
    bool isVisible() const override { return window_->isVisible(); }
    void orderFrontRegardless() override { window_->orderFront(); }
    void orderOut() override { window_->orderOut(); }

  protected:
    explicit QtPanel(PanelWindowPointer<Window> window) : window_(std::move(window)) {}
    Window& window() const { return *window_; }

  private:
    PanelWindowPointer<Window> window_;
};

}  // namespace tessellon
