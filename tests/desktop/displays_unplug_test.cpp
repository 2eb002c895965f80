// Displays that are unplugged and plugged in again while the program runs: what was on them, what
// the program shows there, and what it keeps for them.
#include "displays_fixture.h"
#include "dragging.h"
#include "menu_panel.h"

#include <optional>
#include <string>

namespace tessellon::desktop {
namespace {

constexpr std::size_t middle = 0;
constexpr std::size_t right = 2;

class UnplugTest : public DisplaysTesting<Dragging<WindowManagerTest>> {
  protected:
    /// The desktop and the program with windows of any size.
    void beginInARow() {
        begin(rowOfThree);
        program().change({{"ignoreSmall", false}});
        program().start();
    }

    static Position centerOf(const Frame& frame) {
        return {frame.x + frame.width / 2, frame.y + frame.height / 2};
    }

    /// The picture of that width, which the program shows or will show.
    std::optional<Frame> comes(int width) {
        std::optional<Frame> result;
        waitUntil([&] {
            result = pictureOfWidth(width);
            return result.has_value();
        });
        program().waitUntilIdle();
        return result;
    }
    std::optional<Frame> opensLauncher() {
        desktop().keyboard().combination({Key::rightSuper}, Key::slash);
        return comes(launcherWidth);
    }
    std::optional<Frame> opensMenuAt(Position place) {
        desktop().pointer().moveTo(place);
        Program second(desktop());
        second.launch();
        return comes(MenuPanel::width);
    }

    /// Whether both are nobody's.
    bool keyboardAndPointerAreFree() {
        const bool free = waitUntil([&] { return desktop().keyboard().grab(); });
        desktop().keyboard().ungrab();
        return free && waitUntil([&] { return desktop().pointer().isFree(); });
    }

    /// Nothing of the program's is shown, and nothing is held.
    void expectAllGone(const char* what) {
        EXPECT_TRUE(waitUntilNothingIsShown()) << what;
        program().waitUntilIdle();
        EXPECT_TRUE(pictures().empty()) << what;
    }

    /// The display that shows most of a window; the primary one when none does.
    std::size_t displayOf(const Frame& window, std::size_t count) {
        std::size_t best = 0;
        int most = 0;
        for (std::size_t i = 0; i < count; ++i) {
            const Frame& display = rowOfThree.displays.at(i);
            const int width = std::min(window.x + window.width, display.x + display.width) -
                              std::max(window.x, display.x);
            const int height = std::min(window.y + window.height, display.y + display.height) -
                               std::max(window.y, display.y);
            if (width > 0 && height > 0 && width * height > most) {
                most = width * height;
                best = i;
            }
        }
        return best;
    }
};

TEST_P(UnplugTest, windowsThatWereThereGoOnToSnapAndComeBack) {
    beginInARow();
    const xcb_window_t window = startClockOn(rowOfThree.displays[middle]);
    const Frame original = frameOf(window);
    expectSnaps(window, bottomRightPlace, rowOfThree.usable(middle));
    const Frame there = placedIn(bottomRightPlace, rowOfThree.usable(middle));
    const Frame area = rowOfThree.usable(right);
    const Frame moved{area.x + area.width - there.width, area.y + area.height - there.height,
                      there.width, there.height};
    EXPECT_EQ(snap(window, Held::controlAltSuper, Key::right, moved), moved);
    expectSnaps(window, rightHalfPlace, area);

    desktop().unplug(rowOfThree.nameOf(right));
    // Some window managers move it at once, some leave it where nobody sees it.
    settleDisplays();
    desktop().windows().activate(window);
    const auto now = displayOf(frameOf(window), 2);
    RecordProperty("display", static_cast<int>(now));
    expectSnaps(window, leftHalfPlace, rowOfThree.usable(now));
    expectSnaps(window, maximizedPlace, rowOfThree.usable(now));
    expectSnaps(window, leftHalfPlace, rowOfThree.usable(now));
    const auto other = 1 - now;
    const Frame half = placedIn(leftHalfPlace, rowOfThree.usable(now));
    const Frame target = rowOfThree.usable(other);
    const Frame onOther{target.x, target.y, std::min(half.width, target.width),
                        std::min(half.height, target.height)};
    EXPECT_EQ(snap(window, Held::controlAltSuper, Key::right, onOther), onOther);
    EXPECT_EQ(restored(window), original);

    desktop().plug(rowOfThree.nameOf(right));
    // Some window managers move it now, too.
    settleDisplays();
    ASSERT_EQ(desktop().windows().place(window, original), original);
    expectSnaps(window, bottomRightPlace, rowOfThree.usable(middle));
    EXPECT_EQ(snap(window, Held::controlAltSuper, Key::right, moved), moved);
    expectSnaps(window, rightHalfPlace, area);
    EXPECT_EQ(restored(window), original);
}

class UnplugWhileShownTest : public UnplugTest {};

TEST_P(UnplugWhileShownTest, whatIsShownThereGoes) {
    beginInARow();
    const xcb_window_t window = startClockOn(rowOfThree.displays[right]);
    const Frame original = frameOf(window);
    desktop().windows().activate(window);
    const auto expectGridEverywhere = [&] {
        for (std::size_t i = 0; i < rowOfThree.displays.size(); ++i) {
            EXPECT_TRUE(waitUntilShown(rowOfThree.visible(i))) << i;
        }
        EXPECT_LE(pictures().size(), 4U) << "one each, and the preview";
    };
    const auto unplugged = [&](const char* what) {
        desktop().unplug(rowOfThree.nameOf(right));
        expectAllGone(what);
        EXPECT_TRUE(keyboardAndPointerAreFree()) << what;
        desktop().plug(rowOfThree.nameOf(right));
        settleDisplays();
        EXPECT_EQ(desktop().windows().place(window, original), original);
        desktop().windows().activate(window);
    };

    const Position onDisplay = centerOf(rowOfThree.visible(right));
    const auto launcher = opensLauncher();
    ASSERT_TRUE(launcher);
    EXPECT_EQ(centerOf(*launcher), onDisplay);
    unplugged("launcher");

    const auto menu = opensMenuAt(onDisplay);
    ASSERT_TRUE(menu);
    EXPECT_EQ(displayOf(*menu, 3), right);
    unplugged("menu");

    pressTitleBar(window);
    dragBy(60, 60);
    pressCommand();
    expectGridEverywhere();
    desktop().unplug(rowOfThree.nameOf(right));
    // IceWM moves the window at once, so that the drag goes on over the displays that are left.
    const Frame gone = rowOfThree.visible(right);
    EXPECT_TRUE(waitUntil([&] {
        const auto shown = pictures();
        return std::none_of(shown.begin(), shown.end(),
                            [&](const Frame& frame) { return frame == gone; });
    })) << "the grid of the display that is gone";
    releaseCommand();
    drop();
    expectAllGone("drop");
    EXPECT_TRUE(keyboardAndPointerAreFree());
    desktop().plug(rowOfThree.nameOf(right));
    settleDisplays();

    // A drag without the grid is forgotten, too.
    EXPECT_EQ(desktop().windows().place(window, original), original);
    pressTitleBar(window);
    dragBy(60, 60);
    desktop().unplug(rowOfThree.nameOf(right));
    settleDisplays();
    drop();
    expectAllGone("drag");
    desktop().plug(rowOfThree.nameOf(right));
    settleDisplays();

    EXPECT_EQ(desktop().windows().place(window, original), original);
    pressTitleBar(window);
    dragBy(60, 60);
    pressCommand();
    expectGridEverywhere();
    const Frame area = rowOfThree.visible(right);
    dragTo({area.x + area.width * 85 / 100, area.y + area.height * 9 / 10});
    drop();
    releaseCommand();
    const Frame snapped = placedIn(bottomRightPlace, rowOfThree.usable(right));
    EXPECT_EQ(desktop().windows().settle(window, snapped), snapped);
    expectAllGone("snap");
}

#ifndef TESSELLON_MONITORS_ARE_OUTPUTS
// The screen would get smaller with an output, and docks reserve from its edges.
TEST_P(UnplugTest, thePrimaryDisplayMayGo) {
    beginInARow();
    desktop().unplug(rowOfThree.nameOf(middle));
    settleDisplays();
    const xcb_window_t window = startClockOn(rowOfThree.displays[right]);
    for (const std::size_t display : {std::size_t{1}, right}) {
        expectMovesTo(window, rowOfThree.displays.at(display));
        desktop().windows().activate(window);
        const auto launcher = opensLauncher();
        ASSERT_TRUE(launcher);
        EXPECT_EQ(centerOf(*launcher), centerOf(rowOfThree.visible(display)));
        desktop().keyboard().tap(Key::escape);
        expectAllGone("launcher");
        pressTitleBar(window);
        dragBy(60, 60);
        pressCommand();
        EXPECT_TRUE(waitUntilShown(rowOfThree.visible(1)));
        EXPECT_TRUE(waitUntilShown(rowOfThree.visible(right)));
        releaseCommand();
        drop();
        expectAllGone("grid");
        for (const auto& place : snapPlaces) {
            expectSnaps(window, place, rowOfThree.usable(display));
        }
    }
}
#endif

TEST_P(UnplugTest, theSettingsStayWithinReach) {
    beginInARow();
    const xcb_window_t window = startClockOn(rowOfThree.displays[right]);
    desktop().windows().activate(window);
    ASSERT_TRUE(opensMenuAt(centerOf(rowOfThree.visible(right))));
    desktop().keyboard().combination({Key::leftSuper}, Key::comma);
    const auto settings =
        desktop().windows().waitForTitled(program().process().pid(), "Tessellon Settings");
    ASSERT_TRUE(settings);
    program().waitUntilIdle();
    ASSERT_EQ(displayOf(frameOf(*settings), 3), right);
    desktop().unplug(rowOfThree.nameOf(right));
    EXPECT_TRUE(waitUntil([&] {
        const Frame frame = frameOf(*settings);
        const Position titleBar{frame.x + frame.width / 2, frame.y + 5};
        return std::any_of(rowOfThree.displays.begin(), rowOfThree.displays.begin() + 2,
                           [&](const Frame& each) {
                               return titleBar.x >= each.x && titleBar.x < each.x + each.width &&
                                      titleBar.y >= each.y && titleBar.y < each.y + each.height;
                           });
    })) << frameOf(*settings);
}

INSTANTIATE_TEST_SUITE_P(On, UnplugTest, windowManagersWithDisplays(), windowManagerName);

#ifdef TESSELLON_MONITORS_ARE_OUTPUTS
// Not KWin: the server puts the pointer at the edge of the screen that an output leaves, where KWin
// tiles the dragged window by itself.
INSTANTIATE_TEST_SUITE_P(On, UnplugWhileShownTest, ::testing::Values("openbox"), windowManagerName);
#else
INSTANTIATE_TEST_SUITE_P(On, UnplugWhileShownTest, windowManagersWithDisplays(), windowManagerName);
#endif

}  // namespace
}  // namespace tessellon::desktop
