// Snapping by dragging: notices that a window is being moved, shows the zone grid while command is
// held, and has the engine snap the window to the zone it is dropped on.
#pragma once

#include "base/geometry.h"
#include "base/notification_center.h"
#include "base/token.h"
#include "drag/drag_views.h"
#include "drag/overlay.h"
#include "drag/zone_hints.h"
#include "engine/snap_action.h"
#include "engine/window_engine.h"
#include "platform/run_loop.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace tessellon {

class DragSnapper {
  public:
    /// All of them must outlive the snapper.
    DragSnapper(WindowEngine& engine, DragViews& views, RunLoop& runLoop,
                NotificationCenter& notifications);
    DragSnapper(const DragSnapper&) = delete;
    DragSnapper& operator=(const DragSnapper&) = delete;

    /// Begins to watch the pointer; once is enough.
    void start();

    /// Abandons the gesture in progress, if any; grid and preview are hidden.
    void reset();

    ZoneHints& hints() { return hints_; }

  private:
    struct Candidate {
        SnapAction action;
        /// The identity of its screen.
        std::uint64_t screen;
    };

    void onDragged();
    void onMouseUp();
    void onFlagsChanged();
    void capture();
    void readStart();
    void recognise();
    void followUnmaximizing(const Rect& frame);
    bool isCarriedMaximized(const Rect& frame) const;
    void track();
    void restoreSize();
    void drop();
    bool isBackAtStart() const;
    void scheduleSnap(SnapAction action, const Element& window);
    const Screen* screenAt(Point point);
    std::optional<Rect> landingFrame(SnapAction action, const Screen& screen) const;
    void showCandidate(SnapAction action, const Screen& screen);
    void clearCandidate();
    bool isSwitchedOn() const;

    WindowEngine& engine_;
    RunLoop& runLoop_;
    NotificationCenter& notifications_;
    Overlay overlay_;
    ZoneHints hints_;
    std::vector<Token> monitors_;

    bool captured_ = false;
    std::optional<Element> window_;
    std::optional<Rect> startFrame_;
    /// The gesture begins with the press of the button, not in the middle of a drag.
    bool beginsWithPress_ = true;
    /// As of startFrame_. A pull at the title bar gives such a window its former size.
    bool startedMaximized_ = false;
    /// It has got its former size back, and may turn out smaller by its shadow.
    bool awaitsShadow_ = false;
    bool moving_ = false;
    std::optional<SnapAction> pending_;
    std::optional<Candidate> candidate_;
    Token retry_;  // while there is a candidate that nothing is pending for
    bool gridShown_ = false;

    /// The screens as they were looked at last. Asking for them at every motion of the pointer
    /// would cost more than the rest of it.
    std::vector<Screen> screens_;
    bool screensAreStale_ = true;
    Token displaysChanged_;

    std::vector<Token> scheduledSnaps_;
    std::size_t snapsDone_ = 0;  // of the scheduled ones, from the first on
};

}  // namespace tessellon
