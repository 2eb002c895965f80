// The preview of where a dragged window will land.
#pragma once

#include "drag/drag_views.h"
#include "engine/snap_action.h"

#include <memory>

namespace tessellon {

class Overlay {
  public:
    /// The panel is made at the first show and kept.
    explicit Overlay(DragViews& views) : views_(views) {}

    /// Shows the preview of an action at a frame (screen coordinates, bottom-left origin).
    void show(SnapAction action, const Rect& frame);
    void hide();

  private:
    DragViews& views_;
    std::unique_ptr<OverlayPanel> panel_;
};

}  // namespace tessellon
