// Arrangements and gaps of displays that come and go.
#include "displays_fixture.h"
#include "menu_fixture.h"

#include <algorithm>
#include <cmath>

namespace tessellon::desktop {
namespace {

using DisplayArrangementTest = DisplaysTesting<MenuTesting<WindowManagerTest>>;

// Frames are kept as shares of an area, and come to whole pixels again by growing.
Frame carriedOver(const Frame& frame, const Frame& from, const Frame& to) {
    struct Span {
        int start;
        int length;
    };
    const auto carried = [](Span span, Span all, Span target) {
        const double before = static_cast<double>(span.start - all.start) / all.length;
        const double share = std::min(static_cast<double>(span.length) / all.length, 1 - before);
        const double start = target.start + before * target.length;
        const int first = static_cast<int>(std::floor(start));
        return Span{first, static_cast<int>(std::ceil(start + share * target.length)) - first};
    };
    const Span across = carried({frame.x, frame.width}, {from.x, from.width}, {to.x, to.width});
    const Span down = carried({frame.y, frame.height}, {from.y, from.height}, {to.y, to.height});
    return {across.start, down.start, across.length, down.length};
}

TEST_P(DisplayArrangementTest, theyFollowTheDisplays) {
    begin(rowOfThree);
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
        EXPECT_EQ(desktop().windows().settle(first, firstTarget), firstTarget) << what;
        EXPECT_EQ(desktop().windows().settle(second, secondTarget), secondTarget) << what;
    };
    expectSnaps(first, leftHalfPlace, leftArea);
    expectSnaps(second, bottomRightPlace, middleArea);
    save();
    const Frame onLeft = placedIn(leftHalfPlace, leftArea);
    const Frame onMiddle = placedIn(bottomRightPlace, middleArea);
    ASSERT_EQ(carriedOver(onLeft, leftArea, leftArea), onLeft);
    ASSERT_EQ(carriedOver(onMiddle, middleArea, middleArea), onMiddle);
    expectApplied(0, onLeft, onMiddle, "as saved");

    desktop().plug(rowOfThree.nameOf(right));
    expectApplied(0, onLeft, onMiddle, "with one more");
    expectMovesTo(first, rowOfThree.displays[right]);
    expectSnaps(first, leftHalfPlace, rightArea);
    save();
    const Frame onRight = placedIn(leftHalfPlace, rightArea);

    // What was on a display that is gone goes to the last one.
    desktop().unplug(rowOfThree.nameOf(right));
    expectApplied(1, carriedOver(onRight, rightArea, middleArea), onMiddle, "with one less");
    desktop().unplug(rowOfThree.nameOf(middle));
    const Frame fromMiddle = carriedOver(onMiddle, middleArea, leftArea);
    expectApplied(0, onLeft, fromMiddle, "on the only one");
    expectApplied(1, carriedOver(onRight, rightArea, leftArea), fromMiddle, "both on the only one");

    desktop().plug(rowOfThree.nameOf(middle));
    desktop().plug(rowOfThree.nameOf(right));
    // Fluxbox has brought a dock of theirs to the last display, from where panels go back.
    desktop().removeDocks();
    addDocks(rowOfThree);
    expectApplied(1, carriedOver(onRight, rightArea, rightArea), onMiddle, "plugged in again");
    expectApplied(0, onLeft, onMiddle, "and the other one");
    expectSnaps(first, maximizedPlace, leftArea);
}

INSTANTIATE_TEST_SUITE_P(On, DisplayArrangementTest, windowManagersWithDisplays(),
                         windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
