// Two and three displays of different sizes with docks, on every window manager: places on each of
// them, and the way from one to the next.
#include "displays_fixture.h"
#include "dragging.h"

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
            expectMovesTo(window, layout.displays[display]);
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

}  // namespace
}  // namespace tessellon::desktop
