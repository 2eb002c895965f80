// Drags that do not go as planned: settings that change in the middle, windows that die, releases
// that get lost.
#include "drag/drag_snapper_fixture.h"

namespace tessellon {
namespace {

using enum SnapAction;

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
            EXPECT_EQ(engine().last(), std::nullopt);
            at(window_).frame = before;
        }
    }
}

TEST_F(DragSnapperTest, AWindowThatHasFollowedAlreadyComesFromWhereItWasPressed) {
    at(window_).frameAtPress = before;
    at(window_).frame.x += 60;
    holdCommand();
    beginDrag();
    EXPECT_FALSE(views_.isGridShown());
    dragged();
    EXPECT_TRUE(views_.isGridShown()) << "it has been moved";
    dragTo(300, 500);
    ASSERT_EQ(views_.previews.at(0)->action, leftHalf);
    at(window_).frame = before;  // the drag is given up
    release();
    settle();
    EXPECT_EQ(frame(), before);
}

TEST_F(DragSnapperTest, AWindowThatGotAnotherSizeSinceThePressComesFromWhereItIs) {
    at(window_).frameAtPress = before;
    at(window_).frame = {400, 300, 700, 500};
    holdCommand();
    beginDrag();
    dragged();
    EXPECT_FALSE(views_.isGridShown()) << "it neither moves nor grows now";
    dragTo(300, 500);
    EXPECT_TRUE(views_.isGridShown());
}

TEST_F(DragSnapperTest, AGestureInTheMiddleOfADragBeginsWhereTheWindowIs) {
    at(window_).frameAtPress = before;
    holdCommand();
    beginDrag();
    dragTo(300, 500);
    ASSERT_TRUE(views_.isGridShown());
    snapper_.reset();
    dragged();
    dragged();
    EXPECT_FALSE(views_.isGridShown()) << "it rests";
    dragTo(1600, 500);
    EXPECT_TRUE(views_.isGridShown());
    release();
    settle();
    // With the next press all is as before.
    at(window_).frameAtPress = frame();
    at(window_).frame.y += 40;
    beginDrag();
    dragged();
    EXPECT_TRUE(views_.isGridShown());
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
    at(window_).answersInstead[Attribute::size] = std::nullopt;
    dragTo(960, 500);
    EXPECT_EQ(views_.grids[0]->active, center);
    EXPECT_FALSE(views_.isPreviewShown());
    release();
    settle();
    EXPECT_EQ(engine().last(), std::nullopt);
}

TEST_F(DragSnapperTest, CenterWaitsForAWindowThatHasNoClearSizeYet) {
    holdCommand();
    beginDrag();
    dragTo(300, 500);
    at(window_).answersInstead[Attribute::size] = std::nullopt;
    dragTo(960, 500);
    runLoop_.advance(Seconds(0.25));
    EXPECT_FALSE(views_.isPreviewShown());
    at(window_).answersInstead.clear();
    runLoop_.advance(Seconds(0.1));
    EXPECT_TRUE(views_.isPreviewShown());
    release();
    settle();
    EXPECT_NE(engine().last(), std::nullopt);
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
    EXPECT_EQ(engine().last(), std::nullopt);
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
    EXPECT_EQ(engine().last(), std::nullopt);
    EXPECT_EQ(accessibility().holdsOfDraggedSizes(), 0);

    window_ = open(editor, before);
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
    const auto second = open(editor, {1000, 300, 500, 400});
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
        EXPECT_EQ(at(first).frame, leftHalfFrame) << round;
        EXPECT_EQ(at(second).frame, (Rect{964, 33, 948, 1039})) << round;
        at(first).frame = before;
        at(second).frame = {1000, 300, 500, 400};
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
