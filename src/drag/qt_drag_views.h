// The panels of the drag feature as widgets.
#pragma once

#include "drag/drag_views.h"
#include "platform/compositing.h"
#include "shortcuts/key_bindings.h"

namespace tessellon {

class QtDragViews final : public DragViews {
  public:
    /// The bindings tell the shortcuts that previews show. Both must outlive the panels; a
    /// QApplication must exist.
    QtDragViews(Compositing& compositing, const KeyBindings& bindings)
        : compositing_(compositing), bindings_(bindings) {}

    std::unique_ptr<HintsPanel> makeHintsPanel() override;
    std::unique_ptr<OverlayPanel> makeOverlayPanel() override;

  private:
    Compositing& compositing_;
    const KeyBindings& bindings_;
};

}  // namespace tessellon
