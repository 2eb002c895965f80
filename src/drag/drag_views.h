// What the drag feature shows, as its controllers know it: the panels of the zone grid and of the
// preview, and where they come from.
#pragma once

#include "drag/hint.h"
#include "engine/snap_action.h"
#include "platform/panel.h"

#include <memory>
#include <optional>
#include <vector>

namespace tessellon {

/// The grid of one screen. Click-through.
class HintsPanel : public Panel {
  public:
    /// Shows these zones, none of them active.
    virtual void setHints(std::vector<Hint> hints) = 0;
    /// Highlights the zone of an action, or none. Nothing is drawn when that changes nothing.
    virtual void setActive(std::optional<SnapAction> action) = 0;
};

/// The preview of where a window will land. Click-through.
class OverlayPanel : public Panel {
  public:
    /// Names the action in the preview.
    virtual void setAction(SnapAction action) = 0;
};

class DragViews {
  public:
    virtual ~DragViews() = default;
    virtual std::unique_ptr<HintsPanel> makeHintsPanel() = 0;
    virtual std::unique_ptr<OverlayPanel> makeOverlayPanel() = 0;
};

}  // namespace tessellon
