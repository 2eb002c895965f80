// All windows of a display at once.
#include "engine_fixture.h"

namespace tessellon {
namespace {

class TileTest : public EngineTest {
  protected:
    TileTest() { defaults_.setBool(preference::tilingEnabled, true); }

    /// Opens this many windows, the last one in front.
    std::vector<Element> openMany(int count) {
        std::vector<Element> windows;
        for (int i = 0; i < count; ++i) {
            windows.push_back(open(i % 2 == 0 ? editor : browser, {100.0 + 10 * i, 100, 800, 600}));
        }
        return windows;
    }
};

TEST_F(TileTest, OneMasterAndAStack) {
    const auto windows = openMany(3);
    desktop_.setFrontmost(browser);
    engine().tile();
    EXPECT_EQ(at(windows[2]).frame, (Rect{8, 33, 1139, 1039}));
    EXPECT_EQ(at(windows[1]).frame, (Rect{1154, 33, 758, 516}));
    EXPECT_EQ(at(windows[0]).frame, (Rect{1154, 556, 758, 516}));
}

TEST_F(TileTest, OneWindowFillsTheDisplayAndTwoShareIt) {
    const auto first = open(editor, {100, 100, 800, 600});
    engine().tile();
    EXPECT_EQ(at(first).frame, (Rect{8, 33, 1904, 1039}));
    const auto second = open(browser, {100, 100, 800, 600});
    defaults_.setDouble(preference::masterRatio, 95);
    engine().tile();
    EXPECT_EQ(at(second).frame, (Rect{8, 33, 1520, 1039}));
    EXPECT_EQ(at(first).frame, (Rect{1535, 33, 377, 1039}));
    EXPECT_EQ(engine().memory().records().at(0).original, (Rect{100, 100, 800, 600}));
}

TEST_F(TileTest, TheFocusedWindowIsTheMasterWhereverItStands) {
    const auto windows = openMany(3);
    desktop_.focus(windows[0]);
    desktop_.raise(windows[2]);
    engine().tile();
    EXPECT_EQ(at(windows[0]).frame.x, 8);
    EXPECT_EQ(at(windows[2]).frame.y, 33);
    EXPECT_EQ(at(windows[1]).frame.y, 556);
}

TEST_F(TileTest, ExtraWindowsStayWhereTheyAre) {
    const auto windows = openMany(10);
    const Rect behind = at(windows[0]).frame;
    defaults_.setDouble(preference::maxTiles, 12);
    engine().tile();
    EXPECT_EQ(at(windows[0]).frame, behind);
    EXPECT_EQ(at(windows[1]).frame, (Rect{110, 100, 800, 600}));
    EXPECT_NE(at(windows[2]).frame, (Rect{120, 100, 800, 600}));
    EXPECT_EQ(engine().memory().records().size(), 8U);
}

TEST_F(TileTest, WaitsOnceForAllWindows) {
    const auto windows = openMany(8);
    for (const auto& window : windows) {
        at(window).answerDelay = Seconds(0.1);
    }
    defaults_.setDouble(preference::maxTiles, 8);
    engine();
    int stored = 0;
    const auto token = defaults_.changed().subscribe([&](std::string_view) { ++stored; });
    engine().tile();
    EXPECT_EQ(desktop_.accessibility().waitsForWrites(), 1);
    EXPECT_EQ(desktop_.accessibility().readsOutsideOperations(), 0);
    EXPECT_EQ(desktop_.accessibility().writes().size(), 24U);
    EXPECT_EQ(stored, 1);
}

TEST_F(TileTest, ChoosesTheDisplayOfTheFocusThenOfThePointerThenTheMainOne) {
    const Rect left{0, 0, 1000, 800};
    const Rect right{1000, 0, 1000, 800};
    desktop_.setScreens({screen(1, left, left), screen(2, right, right)});
    const auto leftWindow = open(editor, {0, 0, 500, 400});
    const auto rightWindow = open(browser, {1200, 0, 500, 400});
    const auto tiledAt = [&](const Element& window, const Rect& free) {
        const bool tiled = at(window).frame.width == 984;
        at(window).frame = free;
        return tiled;
    };
    const auto tile = [&] {
        engine().tile();
        return std::pair(tiledAt(leftWindow, {0, 0, 500, 400}),
                         tiledAt(rightWindow, {1200, 0, 500, 400}));
    };
    desktop_.setPointer(Point{1500, 100});
    desktop_.focus(leftWindow);
    EXPECT_EQ(tile(), std::pair(true, false));
    desktop_.setFrontmost(std::nullopt);
    EXPECT_EQ(tile(), std::pair(false, true));
    desktop_.setPointer(Point{1500, -500});
    EXPECT_EQ(tile(), std::pair(true, false)) << "nowhere: the main screen";
    desktop_.setPointer(std::nullopt);
    desktop_.setMainScreen(2);
    EXPECT_EQ(tile(), std::pair(false, true));
}

TEST_F(TileTest, AWindowThatRefusesLeavesItsPlaceEmpty) {
    const auto windows = openMany(3);
    at(windows[1]).refusesToMove = true;
    at(windows[1]).refusesToResize = true;
    desktop_.application(browser)->enhancedUserInterface = true;
    const Rect stays = at(windows[1]).frame;
    engine().tile();
    EXPECT_EQ(at(windows[1]).frame, stays);
    EXPECT_EQ(at(windows[0]).frame, (Rect{1154, 556, 758, 516}));
    EXPECT_EQ(engine().memory().records().at(1).snapped, stays);
    EXPECT_TRUE(desktop_.application(browser)->enhancedUserInterface);
}

TEST_F(TileTest, BeginsNoCycleAndTouchesNothingWhenOff) {
    const auto window = openFocused({100, 100, 800, 600});
    defaults_.setBool(preference::tilingEnabled, false);
    engine().tile();
    defaults_.setBool(preference::tilingEnabled, true);
    defaults_.setBool(preference::paused, true);
    engine().tile();
    defaults_.setBool(preference::paused, false);
    EXPECT_TRUE(desktop_.accessibility().writes().empty());

    engine().snap(SnapAction::leftHalf);
    at(window).minimized = true;
    engine().tile();
    EXPECT_TRUE(engine().last()) << "no window to tile";
    at(window).minimized = false;
    at(window).refusesToMove = true;
    at(window).refusesToResize = true;
    engine().tile();
    EXPECT_EQ(engine().last(), std::nullopt);
    EXPECT_EQ(engine().lastSnap()->action, SnapAction::leftHalf);
    at(window).refusesToMove = false;
    at(window).refusesToResize = false;
    engine().snap(SnapAction::leftHalf);
    EXPECT_EQ(at(window).frame, (Rect{8, 33, 948, 1039}));
}

}  // namespace
}  // namespace tessellon
