#include "drag/drag_snapper.h"

#include "app/notification_names.h"
#include "app/preferences.h"
#include "base/modifier_flag.h"
#include "fake_drag_views.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_event_monitors.h"
#include "platform/memory/memory_user_defaults.h"

#include <any>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

using enum SnapAction;

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

TEST_F(DragSnapperTest, SnapsToTheZoneItIsDroppedOn) {
    std::vector<std::string> told;
    const auto observed = notifications_.observe(
        notification::tourEvent,
        [&](const std::any& object) { told.push_back(std::any_cast<std::string>(object)); });
    snapper_.start();  // once more changes nothing
    beginDrag();
    dragTo(700, 400);
    EXPECT_FALSE(views_.isGridShown()) << "without command the window moves freely";
    holdCommand();
    EXPECT_TRUE(views_.isGridShown());
    EXPECT_EQ(views_.previews.at(0)->action, center);
    dragTo(300, 500);
    EXPECT_EQ(views_.grids[0]->active, leftHalf);
    EXPECT_EQ(views_.grids[1]->active, std::nullopt);
    EXPECT_EQ(views_.previews[0]->action, leftHalf);
    EXPECT_EQ(views_.previews[0]->frame(), (Rect{8, 8, 948, 1039})) << "y up";

    const Rect dragged = frame();
    release();
    EXPECT_FALSE(views_.isGridShown() || views_.isPreviewShown()) << "before the window moves";
    runLoop_.advance(Seconds(0.049));
    EXPECT_EQ(frame(), dragged);
    EXPECT_TRUE(told.empty());
    runLoop_.advance(Seconds(0.001));
    EXPECT_EQ(frame(), leftHalfFrame);
    EXPECT_EQ(told, std::vector<std::string>{"drag"});
    EXPECT_EQ(accessibility().readsOutsideOperations(), 0);
}

TEST_F(DragSnapperTest, APlainDragShowsNothingAndSnapsNothing) {
    beginDrag();
    dragTo(300, 500);
    const Rect dragged = frame();
    release();
    settle();
    EXPECT_EQ(views_.gridsMade, 0);
    EXPECT_EQ(frame(), dragged);
}

TEST_F(DragSnapperTest, CommandBeforeTheDragCountsWithTheFirstMovement) {
    holdCommand();
    beginDrag();
    EXPECT_FALSE(views_.isGridShown());
    dragTo(before.midX() + 2, before.minY() + 12);
    EXPECT_FALSE(views_.isGridShown()) << "2 points are no movement";
    dragTo(before.midX() + 2.5, before.minY() + 10);
    EXPECT_TRUE(views_.isGridShown());
}

TEST_F(DragSnapperTest, ReleasingCommandLetsTheWindowGoFreely) {
    beginDrag();
    dragTo(300, 500);
    holdCommand();
    releaseCommand();
    EXPECT_FALSE(views_.isGridShown() || views_.isPreviewShown());
    holdCommand();
    EXPECT_EQ(views_.grids[0]->active, leftHalf) << "command again, the pointer where it was";
    EXPECT_TRUE(views_.isPreviewShown());
    releaseCommand();
    const Rect dragged = frame();
    release();
    settle();
    EXPECT_EQ(frame(), dragged);
}

TEST_F(DragSnapperTest, ResizingIsNoGesture) {
    holdCommand();
    beginDrag();
    auto& rect = desktop_.window(window_)->frame;
    rect.width += 40;  // by the right edge
    dragged();
    EXPECT_FALSE(views_.isGridShown());
    rect = before;
    rect.x -= 40;  // by the left edge
    rect.width += 40;
    dragged();
    rect.width = before.width;  // a move from here on; this gesture is over all the same
    dragged();
    EXPECT_FALSE(views_.isGridShown());
    release();
    settle();
    EXPECT_EQ(engine_.last(), std::nullopt);
}

TEST_F(DragSnapperTest, AMaximizedWindowIsPulledAway) {
    const Rect maximized{0, 25, 1920, 1055};
    desktop_.window(window_)->frame = maximized;
    desktop_.window(window_)->maximized = true;
    holdCommand();
    beginDrag();
    // The window manager changes the frame and tells of the state a little later.
    desktop_.window(window_)->frame = before;
    dragged();
    desktop_.window(window_)->maximized = false;
    dragged();
    EXPECT_FALSE(views_.isGridShown()) << "it has not moved from where its former size put it";
    dragTo(before.midX() + 2, before.minY() + 10);
    EXPECT_FALSE(views_.isGridShown());
    dragTo(300, 500);
    EXPECT_TRUE(views_.isGridShown());
    release();
    settle();
    EXPECT_EQ(frame(), leftHalfFrame);
}

TEST_F(DragSnapperTest, AWindowWhoseFrameIsChangingWhenTheDragBeginsIsMovedFromTheNextOne) {
    desktop_.window(window_)->answersInstead[Attribute::position] = std::nullopt;
    holdCommand();
    beginDrag();
    desktop_.window(window_)->answersInstead.clear();
    desktop_.window(window_)->frame.width += 100;
    dragged();
    EXPECT_FALSE(views_.isGridShown());
    dragTo(300, 500);
    EXPECT_TRUE(views_.isGridShown());
    EXPECT_EQ(accessibility().readsOutsideOperations(), 0);
}

TEST_F(DragSnapperTest, ResizingAMaximizedWindowIsNoGestureEither) {
    desktop_.window(window_)->maximized = true;
    holdCommand();
    beginDrag();
    auto& window = *desktop_.window(window_);
    for (int step = 0; step < 4; ++step) {
        window.frame.x -= 40;  // by the left edge, which ends the maximizing after a while
        window.frame.width += 40;
        window.maximized = step < 1;
        dragged();
    }
    dragTo(300, 500);
    EXPECT_FALSE(views_.isGridShown());
    release();
    settle();
    EXPECT_EQ(engine_.last(), std::nullopt);
}

TEST_F(DragSnapperTest, AWindowThatIsBackWhereItWasIsNotSnapped) {
    const auto dropAt = [&](Point origin) {
        desktop_.window(window_)->frame.x = origin.x;
        desktop_.window(window_)->frame.y = origin.y;
        release();
        EXPECT_FALSE(views_.isGridShown() || views_.isPreviewShown());
        settle();
    };
    holdCommand();
    for (const bool hasItsSizeBack : {false, true}) {
        if (hasItsSizeBack) {
            engine_.snap(rightHalf, window_);
        }
        const Rect start = frame();
        beginDrag();
        dragTo(300, 500);
        ASSERT_EQ(views_.previews.at(0)->action, leftHalf);
        dropAt({start.x + 2, start.y - 2});
        EXPECT_EQ(frame().origin(), (Point{start.x + 2, start.y - 2}));
        EXPECT_EQ(frame().size(), before.size());
    }
    EXPECT_EQ(accessibility().readsOutsideOperations(), 0);
    const Point start = frame().origin();
    beginDrag();
    dragTo(300, 500);
    dropAt({start.x, start.y + 3});
    EXPECT_EQ(frame(), leftHalfFrame);
}

TEST_F(DragSnapperTest, AWindowPulledAwayGetsItsSizeBackOnce) {
    engine_.snap(leftHalf, window_);
    beginDrag();
    dragTo(900, 300);
    EXPECT_EQ(accessibility().draggedSizes(),
              (std::vector<MemoryAccessibility::DraggedSize>{{window_, before.size()}}));
    EXPECT_TRUE(engine_.memory().records().empty());
    dragTo(910, 310);
    release();
    beginDrag();
    dragTo(950, 350);
    EXPECT_EQ(accessibility().draggedSizes().size(), 1U);
}

TEST_F(DragSnapperTest, RestoringOnDragCanBeSwitchedOff) {
    engine_.snap(leftHalf, window_);
    defaults_.setBool(preference::restoreOnDrag, false);
    beginDrag();
    dragTo(900, 300);
    EXPECT_TRUE(accessibility().draggedSizes().empty());
    EXPECT_EQ(engine_.memory().records().size(), 1U);
}

TEST_F(DragSnapperTest, TheOutstandingSizeIsHeldUntilTheSnapIsDone) {
    engine_.snap(leftHalf, window_);
    holdCommand();
    beginDrag();
    dragTo(1600, 500);
    release();
    EXPECT_EQ(accessibility().holdsOfDraggedSizes(), 1) << "from before the desktop hears of it";
    settle();
    EXPECT_EQ(accessibility().holdsOfDraggedSizes(), 0);
    EXPECT_EQ(frame(), (Rect{964, 33, 948, 1039}));
    EXPECT_EQ(engine_.memory().originalFrame(window_)->size(), before.size());
}

TEST_F(DragSnapperTest, WithoutPreviewTheZonesStillWork) {
    defaults_.setBool(preference::showPreview, false);
    holdCommand();
    beginDrag();
    dragTo(300, 500);
    EXPECT_TRUE(views_.previews.empty());
    EXPECT_EQ(views_.grids[0]->active, leftHalf);
    release();
    settle();
    EXPECT_EQ(frame(), leftHalfFrame);
}

TEST_F(DragSnapperTest, OutsideOfEveryScreenNothingIsPending) {
    holdCommand();
    beginDrag();
    dragTo(300, 500);
    dragTo(300, 1080.5);
    EXPECT_TRUE(views_.isGridShown());
    EXPECT_FALSE(views_.isPreviewShown());
    EXPECT_EQ(views_.grids[0]->active, std::nullopt);
    const Rect dragged = frame();
    release();
    settle();
    EXPECT_EQ(frame(), dragged);
}

TEST_F(DragSnapperTest, TheOutermostPixelsOfAScreenBelongToIt) {
    holdCommand();
    beginDrag();
    dragTo(960, 0);
    EXPECT_EQ(views_.grids[0]->active, topHalf) << "the top row of pixels";
    dragTo(1919, 1079);
    EXPECT_EQ(views_.grids[0]->active, bottomRight);
    dragTo(1920, 500);
    EXPECT_EQ(views_.grids[0]->active, std::nullopt);
    EXPECT_EQ(views_.grids[1]->active, leftThird);
}

TEST_F(DragSnapperTest, ZonesAndPreviewFollowTheDocksFromOneGridToTheNext) {
    beginDrag();
    dragTo(500, 400);
    holdCommand();
    EXPECT_EQ(views_.previews.at(0)->action, leftHalf);
    releaseCommand();
    desktop_.setVisibleFrame(1, {0, 0, 1920, 780});
    holdCommand();
    EXPECT_EQ(views_.previews[0]->action, topLeft);
    EXPECT_EQ(views_.previews[0]->frame(), (Rect{8, 394, 948, 378}));
}

TEST_F(DragSnapperTest, TheSameZoneOfAnotherScreenIsAnotherZone) {
    holdCommand();
    beginDrag();
    dragTo(300, 500);
    dragTo(1920 + 300, 500);
    EXPECT_EQ(views_.grids[0]->active, std::nullopt);
    EXPECT_EQ(views_.grids[1]->active, leftHalf);
    EXPECT_EQ(views_.previews[0]->frame(), (Rect{1928, 8, 948, 1039}));
    release();
    settle();
    EXPECT_EQ(frame(), (Rect{1928, 33, 948, 1039}));
}

TEST_F(DragSnapperTest, SwitchingOffInTheMiddleEndsTheGesture) {
    for (const auto key : {preference::dragEnabled, preference::paused}) {
        for (const bool byFlags : {true, false}) {
            holdCommand();
            beginDrag();
            dragTo(300, 500);
            ASSERT_TRUE(views_.isGridShown());
            defaults_.setBool(key, key == preference::paused);
            byFlags ? holdCommand() : dragged();
            EXPECT_FALSE(views_.isGridShown() || views_.isPreviewShown());
            defaults_.removeObject(key);
            release();
            settle();
            EXPECT_EQ(engine_.last(), std::nullopt);
            desktop_.window(window_)->frame = before;
        }
    }
}

TEST_F(DragSnapperTest, NoWorkIsDoneWhileTheZoneStaysTheSame) {
    holdCommand();
    beginDrag();
    dragTo(300, 500);
    const int reads = accessibility().reads();
    const int activations = views_.grids[0]->activations;
    for (int i = 0; i < 10; ++i) {
        dragTo(301 + i, 500);
    }
    EXPECT_EQ(accessibility().reads(), reads);
    EXPECT_EQ(views_.grids[0]->activations, activations);
    EXPECT_EQ(views_.previews[0]->framesSet, 1);
    dragTo(1600, 500);
    EXPECT_EQ(views_.previews[0]->shows, 1) << "moved, not hidden and shown again";
}

TEST_F(DragSnapperTest, CenterNeedsTheWindowsSize) {
    holdCommand();
    beginDrag();
    dragTo(960, 300);
    EXPECT_EQ(views_.previews.at(0)->frame(), (Rect{560, 227, 800, 601}));
    dragTo(300, 500);
    desktop_.window(window_)->answersInstead[Attribute::size] = std::nullopt;
    dragTo(960, 500);
    EXPECT_EQ(views_.grids[0]->active, center);
    EXPECT_FALSE(views_.isPreviewShown());
    release();
    settle();
    EXPECT_EQ(engine_.last(), std::nullopt);
}

TEST_F(DragSnapperTest, AReleaseThatGotLostIsNoticed) {
    holdCommand();
    beginDrag();
    dragTo(300, 500);
    events().setPressedMouseButtons(0);
    dragged();
    EXPECT_FALSE(views_.isGridShown());
    settle();
    EXPECT_EQ(frame(), leftHalfFrame);
}

TEST_F(DragSnapperTest, AReleaseInOurOwnWindowsCountsAndADragInThemDoesNot) {
    events().setPressedMouseButtons(1);
    setPointer(frame().midX(), frame().minY() + 10);
    events().emit(MonitoredEvent::leftMouseDragged, MemoryEventMonitors::Scope::local);
    EXPECT_EQ(accessibility().reads(), 0);
    holdCommand();
    beginDrag();
    dragTo(300, 500);
    release(MemoryEventMonitors::Scope::local);
    settle();
    EXPECT_EQ(frame(), leftHalfFrame);
}

TEST_F(DragSnapperTest, WindowsThatMayNotBeSnappedAreLeftAlone) {
    toggleIgnored(defaults_, "com.editor");
    holdCommand();
    beginDrag();
    dragTo(300, 500);
    EXPECT_FALSE(views_.isGridShown());
    release();
    settle();
    EXPECT_EQ(engine_.last(), std::nullopt);
}

TEST_F(DragSnapperTest, AWindowThatDiesEndsNothingButItself) {
    holdCommand();
    beginDrag();
    dragTo(300, 500);
    desktop_.close(window_);
    setPointer(1600, 500);
    dragged();
    EXPECT_EQ(views_.grids[0]->active, rightHalf);
    release();
    settle();
    EXPECT_EQ(engine_.last(), std::nullopt);
    EXPECT_EQ(accessibility().holdsOfDraggedSizes(), 0);

    window_ = open(before);
    beginDrag();
    desktop_.close(window_);
    dragged();
    EXPECT_FALSE(views_.isGridShown());
}

TEST_F(DragSnapperTest, ResetAbandonsTheGestureAndTheNextOneStartsAfresh) {
    holdCommand();
    beginDrag();
    dragTo(300, 500);
    desktop_.setScreens({{7, {0, 0, 800, 1080}, {0, 0, 800, 1080}, std::nullopt, "Other"}});
    snapper_.reset();
    snapper_.hints().teardown();
    EXPECT_TRUE(views_.grids.empty());
    dragged();  // the button is still down: a new gesture with this window
    dragTo(700, 600);
    EXPECT_EQ(views_.grids.at(0)->active, rightHalf) << "on the new screen";
    release();
    settle();
    EXPECT_EQ(frame(), (Rect{404, 8, 388, 1064}));
}

TEST_F(DragSnapperTest, TwoQuickDropsBothSnap) {
    const auto first = window_;
    const auto second = open({1000, 300, 500, 400});
    holdCommand();
    for (int round = 0; round < 3; ++round) {
        window_ = first;
        beginDrag();
        dragTo(300, 500);
        release();
        window_ = second;
        beginDrag();
        dragTo(1600, 500);
        release();
        settle();
        EXPECT_EQ(desktop_.window(first)->frame, leftHalfFrame) << round;
        EXPECT_EQ(desktop_.window(second)->frame, (Rect{964, 33, 948, 1039})) << round;
        desktop_.window(first)->frame = before;
        desktop_.window(second)->frame = {1000, 300, 500, 400};
    }
}

TEST_F(DragSnapperTest, ARefusedMonitorDoesNotStopTheOthers) {
    MemoryDesktop desktop;
    desktop.eventMonitors().refuse(MonitoredEvent::flagsChanged);
    WindowEngine engine({desktop.accessibility(), desktop.applications(), desktop.displays(),
                         desktop.windowList(), desktop.eventMonitors(), defaults_});
    DragSnapper snapper(engine, views_, runLoop_, notifications_);
    snapper.start();
    const int reads = desktop.accessibility().reads();
    desktop.launch({editor, "com.editor", "Editor", ActivationPolicy::regular, false});
    MemoryWindow window;
    window.pid = editor;
    desktop.open(window);
    desktop.setPointer(Point{50, 1000});
    desktop.eventMonitors().setPressedMouseButtons(1);
    desktop.eventMonitors().emit(MonitoredEvent::leftMouseDragged);
    EXPECT_GT(desktop.accessibility().reads(), reads);
}

}  // namespace
}  // namespace tessellon
