#include "drag/zone_hints.h"

#include "drag/fake_drag_views.h"
#include "platform/memory/memory_desktop.h"

#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

using enum SnapAction;

Screen screenWith(const Rect& frame, const Rect& visible, std::uint64_t id = 1) {
    return {id, frame, visible, std::nullopt, "Screen"};
}

const Screen plain = screenWith({0, 0, 1000, 800}, {0, 0, 1000, 800});

void expectNear(const Rect& actual, const Rect& expected) {
    EXPECT_TRUE(nearlyEqual(actual, expected, 1e-9))
        << actual.x << ' ' << actual.y << ' ' << actual.width << ' ' << actual.height;
}

TEST(ZoneLayout, CutsTheVisibleFrameIntoElevenZones) {
    const auto hints = ZoneHints::layout(screenWith({0, 0, 1000, 900}, {0, 60, 1000, 800}));
    const std::vector<SnapAction> order{topLeft,    topHalf,    topRight,   leftThird,
                                        leftHalf,   center,     rightHalf,  rightThird,
                                        bottomLeft, bottomHalf, bottomRight};
    ASSERT_EQ(hints.size(), order.size());
    double area = 0;
    for (std::size_t i = 0; i < order.size(); ++i) {
        EXPECT_EQ(hints[i].id, static_cast<int>(i));
        EXPECT_EQ(hints[i].action, order[i]);
        area += hints[i].rect.inset(-4).area();
    }
    EXPECT_NEAR(area, 1000 * 800, 1e-6) << "no gaps and no overlaps but for the insets";
    expectNear(hints[0].rect, {4, 4, 292, 168});
    expectNear(hints[3].rect, {4, 180, 72, 440});
    expectNear(hints[5].rect, {304, 180, 392, 440});
    expectNear(hints[10].rect, {704, 628, 292, 168});
}

TEST(ZoneLayout, LeavesOutZonesThatHaveNoRoom) {
    // 8 % of 100 points is all inset.
    const auto hints = ZoneHints::layout(screenWith({0, 0, 100, 800}, {0, 0, 100, 800}));
    ASSERT_EQ(hints.size(), 9U);
    EXPECT_EQ(hints[3], (Hint{3, hints[3].rect, leftHalf}));
    EXPECT_EQ(hints[8].action, bottomRight);
    EXPECT_EQ(hints[8].id, 8);
    EXPECT_TRUE(ZoneHints::layout(screenWith({0, 0, 1000, 800}, {0, 0, 1000, 0})).empty());
}

TEST(ZoneAt, EdgesBelongToTheZoneAfterThem) {
    const auto at = [](double x, double fromTop) {
        return ZoneHints::zoneAt(plain, {x, 800 - fromTop});
    };
    EXPECT_EQ(at(299.9, 400), leftHalf);
    EXPECT_EQ(at(300, 400), center);
    EXPECT_EQ(at(300, 100), topHalf);
    EXPECT_EQ(at(700, 400), rightHalf);
    EXPECT_EQ(at(700, 700), bottomRight);
    EXPECT_EQ(at(80, 400), leftHalf);
    EXPECT_EQ(at(79.9, 400), leftThird);
    EXPECT_EQ(at(920, 400), rightThird);
    EXPECT_EQ(at(500, 175.9), topHalf);
    EXPECT_EQ(at(500, 176), center);
    EXPECT_EQ(at(500, 624), bottomHalf);
    EXPECT_EQ(at(40, 10), topLeft) << "the corners span two columns";
}

TEST(ZoneAt, EveryPointOfAScreenIsInAZone) {
    // A bar at the top and a dock at the bottom and on the left, on a screen away from the origin.
    const auto screen = screenWith({-2000, 300, 1000, 1000}, {-1900, 400, 900, 800});
    const auto at = [&](double x, double y) { return ZoneHints::zoneAt(screen, {x, y}); };
    EXPECT_EQ(at(-1450, 1300), topHalf) << "in the bar";
    EXPECT_EQ(at(-1450, 310), bottomHalf) << "in the dock";
    EXPECT_EQ(at(-1999, 800), leftThird) << "left of the visible frame";
    EXPECT_EQ(at(-1001, 301), bottomRight);
    EXPECT_EQ(ZoneHints::zoneAt(screenWith({0, 0, 100, 100}, {0, 0, 0, 100}), {50, 50}),
              std::nullopt);
}

TEST(ZoneAt, AgreesWithWhatIsDrawn) {
    for (const auto& hint : ZoneHints::layout(plain)) {
        const Rect& r = hint.rect;
        for (const Point p : {Point{r.minX(), r.minY()}, Point{r.maxX() - 1, r.maxY() - 1}}) {
            EXPECT_EQ(ZoneHints::zoneAt(plain, {p.x, 800 - p.y}), hint.action);
        }
    }
}

class ZoneHintsTest : public testing::Test {
  protected:
    ZoneHintsTest() { setScreens(2); }

    void setScreens(int count, double barHeight = 25) {
        std::vector<Screen> screens;
        for (int i = 0; i < count; ++i) {
            const Rect frame{i * 1000.0, 0, 1000, 800};
            const Rect visible{i * 1000.0, 0, 1000, 800 - barHeight};
            screens.push_back(screenWith(frame, visible, static_cast<std::uint64_t>(i + 1)));
        }
        desktop_.setScreens(std::move(screens));
    }

    MemoryDesktop desktop_;
    FakeDragViews views_;
    ZoneHints hints_{desktop_.displays(), views_};
};

TEST_F(ZoneHintsTest, KeepsItsPanelsWhileTheScreensStay) {
    EXPECT_EQ(views_.gridsMade, 0);
    hints_.show();
    ASSERT_EQ(views_.grids.size(), 2U);
    EXPECT_EQ(views_.grids[1]->frame(), (Rect{1000, 0, 1000, 775}));
    hints_.setActive(leftHalf, desktop_.screens()[0]);
    hints_.hide();
    EXPECT_FALSE(views_.isGridShown());

    setScreens(2, 100);  // a bar has grown; the screens are the same
    hints_.show();
    EXPECT_EQ(views_.gridsMade, 2);
    EXPECT_EQ(views_.grids[0]->active, std::nullopt) << "nothing of the last drag is left";
    EXPECT_EQ(views_.grids[0]->frame(), (Rect{0, 0, 1000, 700}));
    EXPECT_EQ(views_.grids[0]->hints, ZoneHints::layout(desktop_.screens()[0]));
}

TEST_F(ZoneHintsTest, HasOnePanelOnEveryScreenAfterAChange) {
    hints_.show();
    setScreens(3);
    hints_.show();
    EXPECT_EQ(views_.grids.size(), 3U);
    EXPECT_EQ(views_.gridsMade, 5);
    auto moved = desktop_.screens();
    moved[2].frame.y += 100;
    moved[2].visibleFrame.y += 100;
    desktop_.setScreens(moved);
    hints_.show();
    EXPECT_EQ(views_.grids.size(), 3U);
    EXPECT_EQ(views_.gridsMade, 8) << "as many screens, one in another place";
    setScreens(0);
    hints_.show();
    EXPECT_TRUE(views_.grids.empty());
    setScreens(1);
    hints_.show();
    hints_.teardown();
    EXPECT_TRUE(views_.grids.empty());
}

TEST_F(ZoneHintsTest, HighlightsOnOneScreenOnly) {
    hints_.show();
    hints_.setActive(leftHalf, desktop_.screens()[0]);
    hints_.setActive(topLeft, desktop_.screens()[1]);
    EXPECT_EQ(views_.grids[0]->active, std::nullopt);
    EXPECT_EQ(views_.grids[1]->active, topLeft);
    hints_.clearActive();
    EXPECT_EQ(views_.grids[1]->active, std::nullopt);
}

}  // namespace
}  // namespace tessellon
