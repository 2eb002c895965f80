// Where the panel of the status item goes, in figures: bars and docks at every edge, several
// displays, and trays that do not tell their place.
#include "menu/menu_placement.h"

#include "engine/engine_fixture.h"

namespace tessellon {
namespace {

class MenuPlacementTest : public EngineTest {
  protected:
    static constexpr Size size{330, 600};
    static constexpr Rect display{0, 0, 1920, 1080};

    void setVisible(const Rect& visible) { desktop_.setScreens({screen(1, display, visible)}); }

    Rect frame(const std::optional<Rect>& item, const std::optional<Point>& pointer = std::nullopt,
               Size panel = size) {
        const Screens screens(desktop_.displays(), defaults_);
        return menuPanelFrame(menuAnchor(desktop_.displays(), screens, item, pointer), panel);
    }
    Point origin(const std::optional<Rect>& item,
                 const std::optional<Point>& pointer = std::nullopt, Size panel = size) {
        return frame(item, pointer, panel).origin();
    }
};

TEST_F(MenuPlacementTest, HangsBelowAnItemAtTheTop) {
    setVisible({0, 0, 1920, 1055});
    EXPECT_EQ(frame(Rect{900, 1058, 20, 20}), (Rect{745, 452, 330, 600}));
    EXPECT_EQ(origin(Rect{1890, 1058, 20, 20}), (Point{1582, 452})) << "8 points from the right";
    EXPECT_EQ(origin(Rect{10, 1058, 20, 20}), (Point{8, 452})) << "8 points from the left";

    setVisible({0, 0, 1920, 1040});
    EXPECT_EQ(origin(Rect{900, 1050, 20, 20}), (Point{745, 440})) << "not on the bar";
}

TEST_F(MenuPlacementTest, StandsOnADockAtTheBottom) {
    setVisible({0, 40, 1920, 1040});
    EXPECT_EQ(origin(Rect{1800, 8, 24, 24}), (Point{1582, 40})) << "6 points would be on the dock";
    EXPECT_EQ(origin(Rect{600, 16, 24, 24}), (Point{447, 46}));
}

TEST_F(MenuPlacementTest, LiesBesideADockAtTheLeftOrRight) {
    setVisible({48, 0, 1872, 1080});
    EXPECT_EQ(origin(Rect{12, 1040, 24, 24}), (Point{56, 434}));
    EXPECT_EQ(origin(Rect{12, 20, 24, 24}), (Point{56, 50}));
    setVisible({0, 0, 1872, 1080});
    EXPECT_EQ(origin(Rect{1884, 1040, 24, 24}), (Point{1534, 434}));
    EXPECT_EQ(origin(Rect{1884, 20, 24, 24}), (Point{1534, 50}));
}

TEST_F(MenuPlacementTest, GoesAboveOnlyWhereThereIsMoreRoom) {
    setVisible({0, 0, 1920, 1055});
    constexpr Size low{330, 400};
    EXPECT_EQ(origin(Rect{900, 414, 20, 20}, std::nullopt, low), (Point{745, 8})) << "just fits";
    EXPECT_EQ(origin(Rect{900, 413, 20, 20}, std::nullopt, low), (Point{745, 439}));
    EXPECT_EQ(origin(Rect{900, 560, 20, 20}), (Point{745, 0})) << "neither; more room below";
    EXPECT_EQ(origin(Rect{900, 500, 20, 20}), (Point{745, 455})) << "neither; more room above";
}

TEST_F(MenuPlacementTest, KeepsItsTopRightPartWhereItIsTooLarge) {
    setVisible({100, 40, 320, 500});
    EXPECT_EQ(origin(Rect{200, 600, 20, 20}), (Point{420 - 338, 540 - 600}));
    EXPECT_EQ(origin(Rect{200, 4, 20, 20}), (Point{420 - 338, 540 - 600}));
}

TEST_F(MenuPlacementTest, IsOnTheDisplayOfTheItem) {
    desktop_.setScreens({screen(1, display, {0, 0, 1920, 1055}),
                         screen(2, {1920, 100, 1280, 1024}, {1920, 100, 1280, 1000}),
                         screen(3, {0, 1080, 1280, 1024}, {0, 1080, 1280, 1024})});
    EXPECT_EQ(origin(Rect{1925, 1104, 20, 20}), (Point{1928, 498}));
    EXPECT_EQ(origin(Rect{1905, 1058, 20, 20}), (Point{1582, 452})) << "by its middle";
    // The item of a dock that has slid away.
    EXPECT_EQ(origin(Rect{2500, -30, 24, 24}), (Point{2347, 100}));
    EXPECT_EQ(origin(Rect{600, -30, 24, 24}), (Point{447, 0}));
    // Neighboring columns and rows of pixels that belong to different displays.
    EXPECT_EQ(origin(std::nullopt, Point{1919, 900}), (Point{1582, 294}));
    EXPECT_EQ(origin(std::nullopt, Point{1920, 900}), (Point{1928, 294}));
    EXPECT_EQ(origin(std::nullopt, Point{500, 1080}), (Point{335, 455}));
    EXPECT_EQ(origin(std::nullopt, Point{500, 1081}), (Point{335, 1087}));
}

TEST_F(MenuPlacementTest, WithoutThePlaceOfTheItemItIsAtThePointer) {
    desktop_.setScreens({screen(1, display, {0, 40, 1920, 1040}),
                         screen(2, {1920, 0, 1280, 1080}, {1920, 0, 1280, 1080})});
    EXPECT_EQ(origin(std::nullopt, Point{1000, 900}), (Point{835, 294}));
    EXPECT_EQ(origin(std::nullopt, Point{1000, 20}), (Point{835, 40})) << "on the dock";
    EXPECT_EQ(origin(Rect{500, 900, 20, 20}, Point{1000, 900}), (Point{345, 294}));
    EXPECT_EQ(origin(std::nullopt), (Point{1582, 474})) << "the corner of the main display";
    desktop_.setMainScreen(2);
    EXPECT_EQ(origin(std::nullopt), (Point{2862, 474}));
    desktop_.setScreens({});
    const Screens none(desktop_.displays(), defaults_);
    EXPECT_EQ(menuAnchor(desktop_.displays(), none, Rect{500, 900, 20, 20}, {}).visible, Rect{});
    EXPECT_EQ(frame(std::nullopt, Point{1000, 900}).size(), size);
}

}  // namespace
}  // namespace tessellon
