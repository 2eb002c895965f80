// Arrangements and gaps of displays that come and go.
#include "displays_fixture.h"
#include "menu_fixture.h"

#include <cstdlib>

namespace tessellon::desktop {
namespace {

class DisplayArrangementTest : public DisplaysTesting<MenuTesting<WindowManagerTest>> {
  protected:
    /// Kept as shares of the display, so that another one changes the gap between windows with
    /// them.
    bool isNear(xcb_window_t window, const Frame& target) {
        constexpr int gap = 8;
        const auto now = desktop().windows().visibleFrame(window).value_or(Frame{});
        return std::abs(now.x - target.x) < gap && std::abs(now.y - target.y) < gap &&
               std::abs(now.width - target.width) < gap &&
               std::abs(now.height - target.height) < gap;
    }
};

TEST_P(DisplayArrangementTest, theyFollowTheDisplays) {
    if (!begin(rowOfThree)) {
        return;
    }
    constexpr std::size_t middle = 0;
    constexpr std::size_t left = 1;
    constexpr std::size_t right = 2;
    constexpr int ownGap = 30;
    desktop().unplug(rowOfThree.nameOf(right));
    program().change({{"displayPadding",
                       StoredNumbers{{rowOfThree.nameOf(left), static_cast<double>(ownGap)}}}});
    program().start();
    const Frame leftArea = rowOfThree.usable(left, ownGap);
    const Frame middleArea = rowOfThree.usable(middle);
    const Frame rightArea = rowOfThree.usable(right);
    const xcb_window_t first = startClockOn(rowOfThree.displays[left], "first");
    const xcb_window_t second = startClockOn(rowOfThree.displays[middle], "second");
    const Position pointer{rowOfThree.displays[left].x + 900, 100};
    const auto save = [&] {
        click(openedAt(pointer).saveCurrent());
        EXPECT_TRUE(waitUntilClosed());
    };
    const auto expectApplied = [&](int row, const Frame& firstTarget, const Frame& secondTarget,
                                   const char* what) {
        settleDisplays();
        const Frame away = middleOf(rowOfThree.displays[left]);
        EXPECT_EQ(desktop().windows().place(first, away), away) << what;
        EXPECT_EQ(desktop().windows().place(second, away), away) << what;
        click(openedAt(pointer).arrangement(row));
        EXPECT_TRUE(waitUntilClosed());
        EXPECT_TRUE(waitUntil([&] {
            return isNear(first, firstTarget) && isNear(second, secondTarget);
        })) << what
            << desktop().windows().visibleFrame(first).value_or(Frame{})
            << desktop().windows().visibleFrame(second).value_or(Frame{});
    };
    expectSnaps(first, leftHalfPlace, leftArea);
    expectSnaps(second, bottomRightPlace, middleArea);
    save();
    const Frame onLeft = placedIn(leftHalfPlace, leftArea);
    const Frame onMiddle = placedIn(bottomRightPlace, middleArea);
    expectApplied(0, onLeft, onMiddle, "as saved");

    desktop().plug(rowOfThree.nameOf(right));
    expectApplied(0, onLeft, onMiddle, "with one more");
    ASSERT_EQ(desktop().windows().place(first, middleOf(rowOfThree.displays[right])),
              middleOf(rowOfThree.displays[right]));
    expectSnaps(first, leftHalfPlace, rightArea);
    save();

    // What was on a display that is gone goes to the last one.
    desktop().unplug(rowOfThree.nameOf(right));
    expectApplied(1, placedIn(leftHalfPlace, middleArea), onMiddle, "with one less");
    desktop().unplug(rowOfThree.nameOf(middle));
    expectApplied(0, onLeft, placedIn(bottomRightPlace, leftArea), "on the only one");
    expectApplied(1, onLeft, placedIn(bottomRightPlace, leftArea), "both on the only one");

    desktop().plug(rowOfThree.nameOf(middle));
    desktop().plug(rowOfThree.nameOf(right));
    expectApplied(1, placedIn(leftHalfPlace, rightArea), onMiddle, "plugged in again");
    expectApplied(0, onLeft, onMiddle, "and the other one");
    expectSnaps(first, maximizedPlace, leftArea);
}

INSTANTIATE_TEST_SUITE_P(On, DisplayArrangementTest, windowManagersWithDisplays(),
                         windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
