#include "app/notification_names.h"
#include "drag/drag_snapper_fixture.h"

#include <any>
#include <string>
#include <vector>

namespace tessellon {
namespace {

using enum SnapAction;

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
    auto& rect = at(window_).frame;
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
    EXPECT_EQ(engine().last(), std::nullopt);
}

TEST_F(DragSnapperTest, AMaximizedWindowIsPulledAway) {
    const Rect maximized{0, 25, 1920, 1055};
    at(window_).frame = maximized;
    at(window_).maximized = true;
    holdCommand();
    beginDrag();
    // The window manager changes the frame and tells of the state a little later.
    at(window_).frame = before;
    dragged();
    at(window_).maximized = false;
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

TEST_F(DragSnapperTest, APulledWindowMayTurnOutSmallerByItsShadow) {
    at(window_).frame = {0, 25, 1920, 1055};
    at(window_).maximized = true;
    holdCommand();
    beginDrag();
    at(window_).maximized = false;
    at(window_).frame = {before.x - 26, before.y - 26, before.width + 52, before.height + 52};
    dragged();
    at(window_).frame = before;
    dragged();
    EXPECT_FALSE(views_.isGridShown());
    dragTo(300, 500);
    EXPECT_TRUE(views_.isGridShown());
    release();
    settle();
    EXPECT_EQ(frame(), leftHalfFrame);
}

TEST_F(DragSnapperTest, AWindowWhoseFrameIsChangingWhenTheDragBeginsIsMovedFromTheNextOne) {
    at(window_).answersInstead[Attribute::position] = std::nullopt;
    holdCommand();
    beginDrag();
    at(window_).answersInstead.clear();
    at(window_).frame.width += 100;
    dragged();
    EXPECT_FALSE(views_.isGridShown());
    dragTo(300, 500);
    EXPECT_TRUE(views_.isGridShown());
    EXPECT_EQ(accessibility().readsOutsideOperations(), 0);
}

TEST_F(DragSnapperTest, ResizingAMaximizedWindowIsNoGestureEither) {
    at(window_).maximized = true;
    holdCommand();
    beginDrag();
    auto& window = at(window_);
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
    EXPECT_EQ(engine().last(), std::nullopt);
}

TEST_F(DragSnapperTest, AMaximizedWindowIsCarriedToAnotherDisplay) {
    at(window_).frame = {0, 25, 1920, 1055};
    at(window_).maximized = true;
    holdCommand();
    beginDrag();
    at(window_).frame = {1920, 0, 1280, 1024};
    dragged();
    EXPECT_TRUE(views_.isGridShown());
    release();
}

TEST_F(DragSnapperTest, AWindowThatIsBackWhereItWasIsNotSnapped) {
    const auto dropAt = [&](Point origin) {
        at(window_).frame.x = origin.x;
        at(window_).frame.y = origin.y;
        release();
        EXPECT_FALSE(views_.isGridShown() || views_.isPreviewShown());
        settle();
    };
    holdCommand();
    for (const bool hasItsSizeBack : {false, true}) {
        if (hasItsSizeBack) {
            engine().snap(rightHalf, window_);
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
    engine().snap(leftHalf, window_);
    beginDrag();
    dragTo(900, 300);
    EXPECT_EQ(accessibility().draggedSizes(),
              (std::vector<MemoryAccessibility::DraggedSize>{{window_, before.size()}}));
    EXPECT_TRUE(engine().memory().records().empty());
    dragTo(910, 310);
    release();
    beginDrag();
    dragTo(950, 350);
    EXPECT_EQ(accessibility().draggedSizes().size(), 1U);
}

TEST_F(DragSnapperTest, RestoringOnDragCanBeSwitchedOff) {
    engine().snap(leftHalf, window_);
    defaults_.setBool(preference::restoreOnDrag, false);
    beginDrag();
    dragTo(900, 300);
    EXPECT_TRUE(accessibility().draggedSizes().empty());
    EXPECT_EQ(engine().memory().records().size(), 1U);
}

TEST_F(DragSnapperTest, TheOutstandingSizeIsHeldUntilTheSnapIsDone) {
    engine().snap(leftHalf, window_);
    holdCommand();
    beginDrag();
    dragTo(1600, 500);
    release();
    EXPECT_EQ(accessibility().holdsOfDraggedSizes(), 1) << "from before the desktop hears of it";
    settle();
    EXPECT_EQ(accessibility().holdsOfDraggedSizes(), 0);
    EXPECT_EQ(frame(), (Rect{964, 33, 948, 1039}));
    EXPECT_EQ(engine().memory().originalFrame(window_)->size(), before.size());
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

}  // namespace
}  // namespace tessellon
