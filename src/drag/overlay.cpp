#include "drag/overlay.h"

namespace tessellon {

void Overlay::show(SnapAction action, const Rect& frame) {
    if (!panel_) {
        panel_ = views_.makeOverlayPanel();
    }
    panel_->setAction(action);
    if (panel_->frame() != frame) {
        panel_->setFrame(frame);
    }
    if (!panel_->isVisible()) {
        panel_->orderFrontRegardless();
    }
}

void Overlay::hide() {
    if (panel_ && panel_->isVisible()) {
        panel_->orderOut();
    }
}

}  // namespace tessellon
