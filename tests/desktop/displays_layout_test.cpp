// Two and three displays of different sizes with docks, on every window manager: places on each of
// them, and the way from one to the next.
#include "displays_fixture.h"
#include "dragging.h"

#include <array>
#include <string_view>
#include <utility>

namespace tessellon::desktop {
namespace {

class DisplayLayoutTest : public DisplaysTesting<Dragging<WindowManagerTest>> {
  protected:
    void expectExactEverywhere(const DisplayLayout& layout) {
        // A third of a small display is a small window.
        program().change({{"ignoreSmall", false}});
        program().start();
        const xcb_window_t window = startClockOn(layout.displays.front());
        for (const auto display : layout.order) {
            SCOPED_TRACE(display);
            const Frame area = layout.usable(display);
            ASSERT_NO_FATAL_FAILURE(expectMovesTo(window, layout.displays[display]));
            for (const auto& place : snapPlaces) {
                SCOPED_TRACE(static_cast<int>(place.key));
                expectSnaps(window, place, area);
            }
        }
    }
    /// Once around in both directions, in the place on the right half of the first display.
    void expectTheWayAround(const DisplayLayout& layout) {
        const xcb_window_t window =
            startClockOn(layout.displays.at(layout.order.front()), "around");
        const Frame original = frameOf(window);
        const Frame first = placedIn(bottomRightPlace, layout.usable(layout.order.front()));
        ASSERT_EQ(snap(window, Held::controlAlt, bottomRightPlace.key, first), first);
        // It keeps its size where that fits, and its corner.
        Frame current = first;
        const auto go = [&](std::size_t to, Key key) {
            const Frame area = layout.usable(to);
            const int width = std::min(current.width, area.width);
            const int height = std::min(current.height, area.height);
            current = {area.x + area.width - width, area.y + area.height - height, width, height};
            EXPECT_EQ(snap(window, Held::controlAltSuper, key, current), current) << to;
        };
        const auto& order = layout.order;
        for (std::size_t i = 1; i <= order.size(); ++i) {
            go(order[i % order.size()], Key::right);
        }
        for (std::size_t i = order.size(); i-- > 0;) {
            go(order[i], Key::left);
        }
        EXPECT_EQ(restored(window), original);
    }
};

TEST_P(DisplayLayoutTest, everyPlaceIsExactInARow) {
    begin(rowOfThree);
    expectExactEverywhere(rowOfThree);
    expectTheWayAround(rowOfThree);
}

TEST_P(DisplayLayoutTest, everyPlaceIsExactInAStack) {
    begin(stackAndSide);
    expectExactEverywhere(stackAndSide);
    expectTheWayAround(stackAndSide);
}

INSTANTIATE_TEST_SUITE_P(On, DisplayLayoutTest, windowManagersWithDisplays(), windowManagerName);

#ifdef TESSELLON_MONITORS_ARE_OUTPUTS
// i3 brings the docks of an output that is unplugged to another one, where they stay.
INSTANTIATE_TEST_SUITE_P(OnMore, DisplayLayoutTest, ::testing::Values("i3"), windowManagerName);
#endif

using InnerDockTest = DisplayLayoutTest;

// Between two displays there is no edge of the screen that a dock could measure its room from: it
// reserves the whole of the neighbour as well.
TEST_P(InnerDockTest, itTakesRoomOfItsOwnDisplayOnlyInARow) {
    DisplayLayout layout = rowOfThree;
    layout.docks = {{.left = 48, .right = 64}, {.right = 60}, {.left = 40}};
    begin(layout);
    expectExactEverywhere(layout);
    expectTheWayAround(layout);
}

TEST_P(InnerDockTest, itTakesRoomOfItsOwnDisplayOnlyInAStack) {
    DisplayLayout layout = stackAndSide;
    layout.docks = {{.right = 50, .top = 30}, {.bottom = 40}, {.left = 60}};
    begin(layout);
    expectExactEverywhere(layout);
}

// The others keep windows out of the neighbour then, whoever asks for it.
#ifdef TESSELLON_MONITORS_ARE_OUTPUTS
const auto boldWindowManagers = ::testing::Values("kwin");
#else
const auto boldWindowManagers = ::testing::Values("icewm", "kwin");
#endif
INSTANTIATE_TEST_SUITE_P(On, InnerDockTest, boldWindowManagers, windowManagerName);

using LyingDockTest = DisplaysTesting<WindowManagerTest>;

TEST_P(LyingDockTest, everyDisplayKeepsAnAreaThatWindowsFitInto) {
    const Frame left{0, 0, 1280, 1024};
    const Frame right{1280, 56, 1920, 1080};
    constexpr std::uint32_t screenWidth = 3200;
    constexpr std::uint32_t screenHeight = 1136;
    const DisplayLayout layout{.displays = {left, right}, .docks = {{}, {}}, .order = {0, 1}};
    begin(layout);
    program().start();
    const xcb_window_t window = startClockOn(left);
    struct Lie {
        const char* what;
        Frame bar;
        /// In the order of _NET_WM_STRUT_PARTIAL (EWMH).
        std::array<std::uint32_t, 12> claims;
        Edges ofLeft;
        /// The window manager that takes it at its word, and lets no window be there.
        std::string_view believer;
    };
    const Lie lies[]{
        {"covers a display", right, {screenWidth, 0, 0, 0, 56, 1135}, {}, "openbox"},
        {"reserves the neighbour's room, too",
         {0, 984, 1280, 40},
         {0, 0, 0, screenHeight - 984, 0, 0, 0, 0, 0, 0, 0, screenWidth - 1},
         {.bottom = 40},
         {}},
        {"measures from the edge of its own display",
         {1280, 56, 60, 1080},
         {60, 0, 0, 0, 56, 1135},
         {},
         {}},
        {"leaves next to nothing",
         {0, 0, 1280, 30},
         {0, 0, 1000, 0, 0, 0, 0, 0, 0, 1279},
         {},
         "xfwm4"},
        {"reserves more than there is",
         {0, 0, 1280, 30},
         {0, 0, 0xffffffff, 0, 0, 0, 0, 0, 0, 0xffffffff},
         {},
         {}},
    };
    for (const Lie& lie : lies) {
        if (lie.believer == GetParam()) {
            continue;
        }
        SCOPED_TRACE(lie.what);
        desktop().addDock({lie.bar, Edge::top, lie.claims});
        settleDisplays();
        for (const auto& [display, docks] :
             {std::pair(left, lie.ofLeft), std::pair(right, Edges{})}) {
            ASSERT_NO_FATAL_FAILURE(expectMovesTo(window, display));
            expectSnaps(window, leftHalfPlace, within(display, docks));
            expectSnaps(window, maximizedPlace, within(display, docks));
        }
        desktop().removeDocks();
        settleDisplays();
    }
}

INSTANTIATE_TEST_SUITE_P(On, LyingDockTest, ::testing::Values("openbox", "xfwm4", "icewm", "kwin"),
                         windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
