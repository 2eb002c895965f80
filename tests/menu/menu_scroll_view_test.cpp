// The status item's panel on screens that are too low for all of it.
#include "menu/menu_view_fixture.h"
#include "ui/panel_scroll.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace tessellon {
namespace {

using enum SnapAction;

class MenuScrollTest : public MenuViewTest {
  protected:
    void openOn(const Rect& display, const Rect& visible) {
        desktop_.setScreens({screen(1, display, visible)});
        item.setFrame(Rect{display.maxX() - 60, display.maxY() - 26, 20, 22});
        openMenu();
    }
    /// With a bar of 30 pixels at the top.
    void openOn(double width, double height) {
        openOn({0, 0, width, height}, {0, 0, width, height - 30});
    }
    void saveFourArrangements() {
        store.save(std::vector{arrangement("Writing"), arrangement("Reading"),
                               arrangement("Talking"), arrangement("Drawing")});
    }
    PanelScroll& scroll() const { return *all<PanelScroll>(view()).front(); }
    /// The bar beside the content.
    QWidget& bar() const { return *qobject_cast<QWidget*>(scroll().children().back()); }
};

TEST_F(MenuScrollTest, ThePanelStaysInsideOfTheVisibleArea) {
    saveFourArrangements();
    desktop_.launch({300, "com.long", "An Application with a Long Name", ActivationPolicy::regular,
                     /*hidden=*/false});
    desktop_.focus(open(300, {0, 0, 800, 600}));
    openMenu();
    const int whole = view().height();
    const auto picture1 = picture();
    ASSERT_GT(whole, 600);
    EXPECT_EQ(scroll().largestOffset(), 0);
    EXPECT_FALSE(bar().isVisible());
    turnWheel(tile(leftHalf), -120);
    EXPECT_EQ(picture(), picture1) << "nothing to scroll";

    openOn(1024, whole + 30);
    EXPECT_EQ(picture(), picture1) << "just enough room";
    openOn(1024, whole + 29);
    EXPECT_EQ(view().height(), whole - 1);
    EXPECT_EQ(scroll().largestOffset(), 1);

    for (const auto& display :
         {Rect{0, 0, 1024, 600}, Rect{0, 0, 800, 480}, Rect{0, 0, 640, 300}}) {
        const Rect visible{0, 0, display.width, display.height - 30};
        openOn(display, visible);
        EXPECT_EQ(view().screenFrame().intersection(visible), view().screenFrame());
        EXPECT_TRUE(bar().isVisible());
        for (const auto* const name : {"Settings", "Updates", "Quit"}) {
            EXPECT_TRUE(isWholeInView(control(name))) << name;
        }
        // The top is as it always is.
        const QRect top(0, 30, 310, 20);
        EXPECT_EQ(picture().copy(top), picture1.copy(top));
    }
    openOn({0, 0, 800, 100}, {0, 0, 800, 70});
    EXPECT_TRUE(isWholeInView(control("Quit")));
    EXPECT_GT(scroll().height(), tile(leftHalf).tileGeometry().height()) << "not less than a tile";
}

TEST_F(MenuScrollTest, TheVisiblePartFollowsTheKeyboard) {
    saveFourArrangements();
    defaults_.setBool(preference::tilingEnabled, true);
    for (const double height : {600.0, 480.0, 300.0}) {
        openOn(800, height);
        const auto count = all<QAbstractButton>(view()).size();
        ASSERT_EQ(count, 28U);
        for (const auto& [forth, modifiers] : {std::pair{symbol::tab, std::uint64_t{0}},
                                               {symbol::backtab, modifier_flag::shift},
                                               std::pair{symbol::down, std::uint64_t{0}},
                                               {symbol::up, std::uint64_t{0}}}) {
            for (std::size_t i = 0; i < count; ++i) {
                key(forth, modifiers);
                ASSERT_NE(focused(), "");
                EXPECT_TRUE(isWholeInView(*view().focusWidget())) << focused() << " at " << height;
            }
        }
        tile(leftHalf).setFocus(Qt::TabFocusReason);
        EXPECT_EQ(scroll().offset(), 0) << "with the heading above it";
    }
}

TEST_F(MenuScrollTest, TheMouseReachesEverything) {
    saveFourArrangements();
    openOn(1024, 600);
    const double largest = scroll().largestOffset();
    ASSERT_GT(largest, 90);
    auto& lowest = control("Tile this display");
    EXPECT_FALSE(isWholeInView(lowest));
    EXPECT_TRUE(isWholeInView(tile(leftHalf)));

    turnWheel(tile(leftHalf), -30);
    const double quarter = scroll().offset();
    EXPECT_GT(quarter, 0);
    turnWheel(tile(leftHalf), -90);
    EXPECT_EQ(scroll().offset(), 4 * quarter) << "a fine wheel goes the same way";
    turnWheel(control("Pause snapping"), -1200);
    EXPECT_EQ(scroll().offset(), largest);
    EXPECT_TRUE(isWholeInView(lowest));
    click(lowest);
    EXPECT_TRUE(defaults_.boolForKey(preference::tilingEnabled));
    turnWheel(lowest, 12000);
    EXPECT_EQ(scroll().offset(), 0);

    sendMouse(bar(), QEvent::MouseButtonPress, {5, 10});
    EXPECT_EQ(scroll().offset(), 0) << "held, not moved";
    sendMouse(bar(), QEvent::MouseMove, {5, 10.0 + bar().height()});
    EXPECT_EQ(scroll().offset(), largest);
    sendMouse(bar(), QEvent::MouseMove, {-40, 10});
    EXPECT_EQ(scroll().offset(), 0);
    sendMouse(bar(), QEvent::MouseButtonRelease, {-40, 10});
    click(bar(), {5, bar().height() - 2.0});
    EXPECT_EQ(scroll().offset(), largest) << "a press brings the bar there";
    sendMouse(bar(), QEvent::MouseMove, {5, 10});
    EXPECT_EQ(scroll().offset(), largest) << "let go";
}

TEST_F(MenuScrollTest, WhatIsCutOffFadesAway) {
    saveFourArrangements();
    openOn(1024, 600);
    const int top = scroll().y();
    const int bottom = scroll().geometry().bottom();
    // In the middle of the arrangements, and of the tiles.
    for (const double offset : {60.0, 90.0}) {
        scroll().setOffset(offset);
        const auto image = picture();
        int inked = 0;
        for (int x = 12; x < 318; ++x) {
            EXPECT_GT(image.pixelColor(x, top).lightness(), 235) << x;
            inked += isBlend(image.pixelColor(x, top + 14), palette::paper, 1) ? 0 : 1;
            EXPECT_GT(image.pixelColor(x, bottom).lightness(), 235) << x;
        }
        EXPECT_GT(inked, 0) << "there is something to fade";
    }
}

}  // namespace
}  // namespace tessellon
