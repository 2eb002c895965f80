// What the tests of drags by hand share: a desktop of two screens in memory, a window on it, and
// the hand that drags it.
#pragma once

#include "base/modifier_flag.h"
#include "drag/drag_snapper.h"
#include "drag/fake_drag_views.h"
#include "engine/engine_fixture.h"
#include "platform/memory/manual_run_loop.h"

namespace tessellon {

/// A window on a desktop of two screens, and a hand that drags it. The hand's points are in the
/// accessibility space.
class DragSnapperTest : public EngineTest {
  protected:
    static constexpr Rect before{300, 200, 800, 600};
    static constexpr Rect leftHalfFrame{8, 33, 948, 1039};

    DragSnapperTest() {
        desktop_.setScreens({screen(1, {0, 0, 1920, 1080}, {0, 0, 1920, 1055}),
                             screen(2, {1920, 0, 1920, 1080}, {1920, 0, 1920, 1055})});
        window_ = open(editor, before);
        snapper_.start();
    }

    Rect frame() { return at(window_).frame; }
    void setPointer(double x, double y) { desktop_.setPointer(Point{x, 1080 - y}); }
    void dragged() { events().emit(MonitoredEvent::leftMouseDragged); }

    /// The button goes down on the title bar and the pointer leaves its place.
    void beginDrag() {
        events().setPressedMouseButtons(1);
        setPointer(frame().midX(), frame().minY() + 10);
        dragged();
    }
    /// The window follows the pointer.
    void dragTo(double x, double y) {
        auto& rect = at(window_).frame;
        rect.x = x - rect.width / 2;
        rect.y = y - 10;
        setPointer(x, y);
        dragged();
    }
    void holdCommand() { setFlags(modifier_flag::command | modifier_flag::rightCommand); }
    void releaseCommand() { setFlags(0); }
    void setFlags(std::uint64_t flags) {
        events().setModifierFlags(flags);
        events().emit(MonitoredEvent::flagsChanged);
    }
    void release(MemoryEventMonitors::Scope scope = MemoryEventMonitors::Scope::global) {
        events().setPressedMouseButtons(0);
        events().emit(MonitoredEvent::leftMouseUp, scope);
    }
    void settle() { runLoop_.advance(Seconds(0.1)); }

    MemoryEventMonitors& events() { return desktop_.eventMonitors(); }
    MemoryAccessibility& accessibility() { return desktop_.accessibility(); }

    ManualRunLoop runLoop_;
    NotificationCenter notifications_;
    FakeDragViews views_;
    Element window_;
    DragSnapper snapper_{engine(), views_, runLoop_, notifications_};
};

}  // namespace tessellon
