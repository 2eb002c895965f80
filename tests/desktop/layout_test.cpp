// Several windows and several displays, on every window manager: display moves, tiling, and
// arrangements by their shortcut.
#include "desktop_fixture.h"

#include <string>
#include <vector>

namespace tessellon::desktop {
namespace {

using LayoutTest = WindowManagerTest;

TEST_P(LayoutTest, displayMovesKeepThePlaceAndWrapAround) {
    useDesktop(Monitors::twoSideBySide);
    program().start();
    const xcb_window_t window = startClock({100, 100, 500, 400});
    const auto expect = [&](Held held, Key key, const Frame& target) {
        EXPECT_EQ(snap(window, held, key, target), target);
    };
    expect(Held::controlAlt, Key::left, {8, 33, 468, 1039});
    expect(Held::controlAltSuper, Key::right, {968, 33, 468, 1039});
    expect(Held::controlAltSuper, Key::right, {8, 33, 468, 1039});
    expect(Held::controlAltSuper, Key::left, {968, 33, 468, 1039});
    expect(Held::controlAlt, Key::right, {1444, 33, 468, 1039});
    expect(Held::controlAltSuper, Key::left, {484, 33, 468, 1039});
    expect(Held::controlAlt, Key::backspace, {100, 100, 500, 400});
}

TEST_P(LayoutTest, tilesTheFrontMostWindowsOfADisplay) {
    useProgram({{"tilingEnabled", true}, {"maxTiles", 4.0}});
    std::vector<xcb_window_t> windows;
    std::vector<Frame> originals;
    for (int i = 0; i < 5; ++i) {
        originals.push_back({100 + 60 * i, 120 + 40 * i, 600, 420});
        windows.push_back(startClock(originals.back(), "clock " + std::to_string(i)));
    }
    for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
        desktop().windows().activate(*window);
    }
    desktop().keyboard().combination(Held::controlAltSuper, Key::t);
    const std::vector<Frame> tiled{
        {8, 33, 1139, 1039}, {1154, 33, 758, 343}, {1154, 383, 758, 339}, {1154, 729, 758, 343}};
    for (std::size_t i = 0; i < tiled.size(); ++i) {
        EXPECT_EQ(desktop().windows().settle(windows[i], tiled[i]), tiled[i]) << "window " << i;
    }
    EXPECT_EQ(desktop().windows().visibleFrame(windows[4]), originals[4]);
    EXPECT_EQ(snap(windows[2], Held::controlAlt, Key::backspace, originals[2]), originals[2]);
}

TEST_P(LayoutTest, windowsOfOtherDesktopsStayWhereTheyAre) {
    useProgram({{"tilingEnabled", true}});
    const Frame original{150, 130, 640, 480};
    const xcb_window_t elsewhere = startClock(original, "elsewhere");
    desktop().windows().showDesktop(1);
    desktop().keyboard().combination(Held::controlAltSuper, Key::t);
    program().waitUntilIdle();
    const xcb_window_t here = startClock(original, "here");
    desktop().windows().activate(here);
    desktop().keyboard().combination(Held::controlAltSuper, Key::t);
    EXPECT_EQ(desktop().windows().settle(here, usableArea), usableArea);
    desktop().windows().showDesktop(0);
    EXPECT_EQ(desktop().windows().settle(elsewhere, original), original);
}

TEST_P(LayoutTest, anArrangementIsAppliedByItsShortcut) {
    useDesktop();
    program().change(
        {{"arrangements",
          StoredData{
              R"([{"id":"3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5C","name":"Work","placements":[)"
              R"({"bundleID":"XClock","title":"second","screen":0,"unit":[[0.5,0.5],[0.5,0.5]]},)"
              R"({"bundleID":"XClock","title":"first","screen":0,"unit":[[0,0],[0.5,1]]},)"
              R"({"bundleID":"XClock","title":"gone","screen":0,"unit":[[0,0],[1,1]]}],)"
              R"("combo":{"keyCode":18,"mods":786432,"key":"1"}}])"}}});
    program().start();
    const Frame original{150, 130, 640, 480};
    const xcb_window_t first = startClock(original, "first");
    const xcb_window_t second = startClock({400, 300, 620, 470}, "second");
    desktop().keyboard().combination(Held::controlAlt, Key::one);
    const Frame firstTarget{8, 33, 952, 1039};
    const Frame secondTarget{960, 552, 952, 520};
    EXPECT_EQ(desktop().windows().settle(first, firstTarget), firstTarget);
    EXPECT_EQ(desktop().windows().settle(second, secondTarget), secondTarget);
    EXPECT_EQ(snap(first, Held::controlAlt, Key::backspace, original), original);
}

INSTANTIATE_TEST_SUITE_P(On, LayoutTest, testedWindowManagers(), windowManagerName);

using MonitorTest = DesktopTest;

TEST_F(MonitorTest, unpluggedMonitorsAreNoticedBetweenTwoActions) {
    useDesktop(Monitors::twoSideBySide);
    program().start();
    const xcb_window_t window = startClock({1100, 100, 500, 400});
    const Frame onTheRight{1444, 33, 468, 1039};
    ASSERT_EQ(snap(window, Held::controlAlt, Key::right, onTheRight), onTheRight);
    desktop().run({"xrandr", "--delmonitor", "R"});
    desktop().run({"xrandr", "--delmonitor", "L"});
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    EXPECT_EQ(afterPress(window, Held::controlAltSuper, Key::right), leftHalf);
}

}  // namespace
}  // namespace tessellon::desktop
