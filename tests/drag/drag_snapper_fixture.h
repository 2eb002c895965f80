// What the tests of drags by hand share: a desktop of two screens in memory, a window on it, and
// the hand that drags it.
#pragma once

#include "app/preferences.h"
#include "base/modifier_flag.h"
#include "drag/drag_snapper.h"
#include "fake_drag_views.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_event_monitors.h"
#include "platform/memory/memory_user_defaults.h"

#include <gtest/gtest.h>

namespace tessellon {

/// A window on a desktop of two screens, and a hand that drags it. The hand's points are in the
/// accessibility space.
class DragSnapperTest : public testing::Test {
  protected:
    static constexpr Rect before{300, 200, 800, 600};
    static constexpr Rect leftHalfFrame{8, 33, 948, 1039};
    static constexpr Pid editor = 100;

    DragSnapperTest() {
        registerPreferenceDefaults(defaults_);
        desktop_.setScreens(
            {{1, {0, 0, 1920, 1080}, {0, 0, 1920, 1055}, std::nullopt, "One"},
             {2, {1920, 0, 1920, 1080}, {1920, 0, 1920, 1055}, std::nullopt, "Two"}});
        desktop_.launch({editor, "com.editor", "Editor", ActivationPolicy::regular, false});
        window_ = open(before);
        snapper_.start();
    }

    Element open(const Rect& frame, Pid pid = editor) {
        MemoryWindow window;
        window.pid = pid;
        window.frame = frame;
        return desktop_.open(std::move(window));
    }

    Rect frame() { return desktop_.window(window_)->frame; }
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
        auto& rect = desktop_.window(window_)->frame;
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

    MemoryDesktop desktop_;
    MemoryUserDefaults defaults_;
    ManualRunLoop runLoop_;
    NotificationCenter notifications_;
    FakeDragViews views_;
    Element window_;
    WindowEngine engine_{{desktop_.accessibility(), desktop_.applications(), desktop_.displays(),
                          desktop_.windowList(), desktop_.eventMonitors(), defaults_}};
    DragSnapper snapper_{engine_, views_, runLoop_, notifications_};
};

}  // namespace tessellon
