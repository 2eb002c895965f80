// The zone grid: one panel on every screen, and which zone is where.
#pragma once

#include "drag/drag_views.h"
#include "drag/hint.h"
#include "platform/displays.h"

#include <memory>
#include <optional>
#include <vector>

namespace tessellon {

class ZoneHints {
  public:
    /// Both must outlive the grid. No panel is made before the first show.
    ZoneHints(const Displays& displays, DragViews& views);

    /// The zones of a screen as they are drawn in its visible frame.
    static std::vector<Hint> layout(const Screen& screen);

    /// The action of the zone at a point (screen coordinates, bottom-left origin). Every point of a
    /// screen is in one; nothing when the screen has no usable area.
    static std::optional<SnapAction> zoneAt(const Screen& screen, Point point);

    /// Shows the grid on every screen, nothing active. Panels are kept from one time to the next
    /// while the screens stay as they are.
    void show();
    /// Hides the grid and keeps its panels.
    void hide();
    /// Closes all panels.
    void teardown();

    /// Highlights the zone of `action` on `screen` and nothing on the others.
    void setActive(SnapAction action, const Screen& screen);
    /// Highlights nothing.
    void clearActive();

  private:
    struct ScreenPanel {
        Screen screen;
        std::unique_ptr<HintsPanel> panel;
    };

    const Displays& displays_;
    DragViews& views_;
    std::vector<ScreenPanel> panels_;
};

}  // namespace tessellon
