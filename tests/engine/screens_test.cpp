// Several displays in the accessibility space.
#include "engine/screens.h"

#include "engine_fixture.h"
#include "fakes/counting_displays.h"

namespace tessellon {
namespace {

class ScreensTest : public EngineTest {
  protected:
    const Screens& screens() { return engine().screens(); }

    std::optional<std::uint64_t> idFor(const Rect& rect) {
        const auto found = screens().screenFor(rect);
        return found ? std::optional(found->id) : std::nullopt;
    }

    std::vector<std::uint64_t> order() {
        std::vector<std::uint64_t> ids;
        for (const auto& screen : screens().displayOrder()) {
            ids.push_back(screen.id);
        }
        return ids;
    }
};

TEST_F(ScreensTest, FlipsAroundThePrimaryDisplay) {
    const Rect rect{-100, 200, 300, 50};
    EXPECT_EQ(screens().toAccessibilityRect(rect), (Rect{-100, 830, 300, 50}));
    EXPECT_EQ(screens().toAccessibilityRect(screens().toAccessibilityRect(rect)), rect);
    EXPECT_EQ(screens().toAccessibilityPoint({5, 1080}), (Point{5, 0}));
    desktop_.setScreens({});
    EXPECT_EQ(screens().toAccessibilityRect(rect), (Rect{-100, -250, 300, 50}));
}

TEST_F(ScreensTest, AWindowBelongsWhereMostOfItIs) {
    // The second one is higher: its lower edge lies 200 above the primary's.
    desktop_.setScreens({screen(1, {0, 0, 1000, 800}, {0, 0, 1000, 800}),
                         screen(2, {1000, 200, 1000, 800}, {1000, 200, 1000, 800})});
    desktop_.setMainScreen(2);
    EXPECT_EQ(idFor({700, 0, 500, 100}), 1U);
    EXPECT_EQ(idFor({800, 0, 500, 100}), 2U);
    EXPECT_EQ(idFor({800, 0, 400, 100}), 1U) << "equal shares: the earlier one";
    EXPECT_EQ(idFor({900, 700, 300, 100}), 1U) << "below the lower edge of the second one";
    EXPECT_EQ(idFor({5000, 0, 100, 100}), 2U) << "nowhere: the main screen";
    EXPECT_EQ(idFor({100, 100, 0, 0}), 2U) << "no area: the main screen";
    desktop_.setMainScreen(7);
    EXPECT_EQ(idFor({5000, 0, 100, 100}), 1U) << "no main screen: the first one";
    desktop_.setScreens({});
    EXPECT_EQ(idFor({0, 0, 100, 100}), std::nullopt);
}

TEST_F(ScreensTest, OrderRunsFromLeftToRightAndDownEachColumn) {
    const Rect upperLeft{0, 1080, 1920, 1080};
    const Rect lowerLeft{0, 0, 1920, 1080};
    const Rect right{1920, 0, 1920, 1080};
    const Rect farLeft{-800, 0, 800, 600};
    desktop_.setScreens({screen(1, lowerLeft, lowerLeft), screen(2, right, right),
                         screen(3, upperLeft, upperLeft), screen(4, farLeft, farLeft)});
    EXPECT_EQ(order(), (std::vector<std::uint64_t>{4, 3, 1, 2}));
    const auto all = screens().displayOrder();
    EXPECT_EQ(indexOfScreen(all, screen(1, {}, {})), 2U);
    EXPECT_EQ(indexOfScreen(all, screen(9, lowerLeft, lowerLeft)), std::nullopt);
}

TEST_F(ScreensTest, OneOperationLooksAtThemOnce) {
    CountingDisplays displays(services());
    WindowEngine counted(displays.services());
    defaults_.setBool(preference::tilingEnabled, true);
    for (int i = 0; i < 8; ++i) {
        open(editor, {100.0 + 10 * i, 100, 800, 600});
    }
    counted.tile();
    EXPECT_EQ(displays.looks(), 1);
    counted.snap(SnapAction::leftHalf, openFocused({100, 100, 800, 600}));
    EXPECT_EQ(displays.looks(), 2);

    {
        const auto outer = screens().beginReads();
        EXPECT_EQ(order().size(), 1U);
        { const auto inner = screens().beginReads(); }
        desktop_.setScreens({});
        EXPECT_EQ(order().size(), 1U);
    }
    EXPECT_TRUE(order().empty());
}

TEST_F(ScreensTest, EveryDisplayHasItsEdgeGap) {
    const Rect frame{0, 0, 1920, 1080};
    const auto plain = screen(1, frame, {0, 0, 1920, 1055});
    const auto own = screen(2, frame, frame, "11111111-2222-3333-4444-555555555555");
    desktop_.setScreens({plain, own});
    EXPECT_EQ(screens().usableFrame(plain), (Rect{8, 33, 1904, 1039}));

    setDisplayPaddingOverrides(defaults_, {{"11111111-2222-3333-4444-555555555555", 0}});
    EXPECT_EQ(screens().usableFrame(own), frame);
    EXPECT_EQ(screens().usableFrame(plain), (Rect{8, 33, 1904, 1039}));
    setDisplayPaddingOverrides(defaults_, {{"Screen 1", 20}});
    EXPECT_EQ(screens().usableFrame(plain), (Rect{20, 45, 1880, 1015})) << "no UUID: by name";

    defaults_.setDouble(preference::padding, 40);
    const auto flat = screen(3, {0, 0, 1000, 70}, {0, 0, 1000, 70});
    EXPECT_EQ(screens().usableFrame(flat), (Rect{0, 1010, 1000, 70})) << "does not fit";
    const auto exact = screen(4, {0, 0, 1000, 80}, {0, 0, 1000, 80});
    EXPECT_EQ(screens().usableFrame(exact).height, 80);
}

}  // namespace
}  // namespace tessellon
