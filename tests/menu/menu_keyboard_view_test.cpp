// The status item's panel without a mouse: by keyboard and by assistive technology.
#include "menu/menu_view_fixture.h"

#include <QAccessible>
#include <initializer_list>
#include <string>
#include <vector>

namespace tessellon {
namespace {

using enum SnapAction;
using MenuKeyboard = MenuViewTest;

TEST_F(MenuKeyboard, TheFirstKeyFindsTheFirstTile) {
    openMenu();
    const auto before = picture();
    EXPECT_EQ(focused(), "") << "no ring for those who use the mouse";
    key(symbol::tab);
    EXPECT_EQ(focused(), "Left Half");
    const QRect place = placeOf(leftHalf);
    const QPoint onRing(place.left() - 3, place.center().y());
    EXPECT_TRUE(isBlend(before.pixelColor(onRing), palette::paper, 1));
    EXPECT_TRUE(isBlend(picture().pixelColor(onRing), palette::ink, 1));

    openMenu();
    key(symbol::down);
    EXPECT_EQ(focused(), "Left Half");
    openMenu();
    key(symbol::backtab, modifier_flag::shift);
    EXPECT_EQ(focused(), "Quit");
    openMenu();
    click(control("Tile this display"));
    EXPECT_EQ(focused(), "") << "a click is no use of the keyboard";
    defaults_.setBool(preference::paused, true);
    key(symbol::tab);
    EXPECT_EQ(focused(), "Save current") << "what cannot be used is left out";
}

TEST_F(MenuKeyboard, TabComesToEveryControlInOrder) {
    store.save(std::vector{arrangement("Writing")});
    defaults_.setBool(preference::tilingEnabled, true);
    openMenu();
    std::vector<std::string> order;
    for (int i = 0; i < 25; ++i) {
        key(symbol::tab);
        order.push_back(focused());
    }
    EXPECT_EQ(order[15], "Restore");
    EXPECT_EQ(
        (std::vector<std::string>(order.begin() + 16, order.end())),
        (std::vector<std::string>{"Save current", "Writing", "Pause snapping", "Ignore this app",
                                  "Tile now", "Tile this display", "Settings", "Updates", "Quit"}));
}

TEST_F(MenuKeyboard, ArrowsMoveToWhatLiesThere) {
    defaults_.setBool(preference::tilingEnabled, true);
    openMenu();
    const auto after = [this](std::initializer_list<std::uint32_t> keys) {
        for (const auto k : keys) {
            key(k);
        }
        return focused();
    };
    using namespace symbol;
    EXPECT_EQ(after({right, right, right}), "Top Half");
    EXPECT_EQ(after({down}), "Bottom Left");
    EXPECT_EQ(after({right, right, right}), "Bottom Right");
    EXPECT_EQ(after({down, down, down}), "Save current");
    EXPECT_EQ(after({down, down, down}), "Tile this display");
    EXPECT_EQ(after({left}), "Tile now");
    EXPECT_EQ(after({down, down, left}), "Updates");
    EXPECT_EQ(after({left, left}), "Settings");
    EXPECT_EQ(after({up, up, up, up, up}), "Restore");
    defaults_.setBool(preference::paused, true);
    EXPECT_NE(focused(), "Restore") << "a tile that cannot be used any more keeps no focus";
}

TEST_F(MenuKeyboard, ReturnAndSpacePressWhatHasTheFocus) {
    openMenu();
    auto& pause = control("Pause snapping");
    pause.setFocus(Qt::TabFocusReason);
    key(symbol::enter);
    EXPECT_TRUE(defaults_.boolForKey(preference::paused));
    key(' ');
    EXPECT_FALSE(defaults_.boolForKey(preference::paused));

    tile(leftHalf).setFocus(Qt::TabFocusReason);
    key(symbol::enter);
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(at(window_).frame, leftHalfFrame);
    settle();
    openMenu();
    control("Settings").setFocus(Qt::TabFocusReason);
    key(' ');
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(settingsOpened, 1);
}

TEST_F(MenuKeyboard, EveryControlHasANameAndARole) {
    openMenu();
    for (auto* const found : all<QAbstractButton>(view())) {
        auto* const accessible = QAccessible::queryAccessibleInterface(found);
        ASSERT_NE(accessible, nullptr);
        EXPECT_FALSE(accessible->text(QAccessible::Name).isEmpty());
        EXPECT_FALSE(accessible->text(QAccessible::Description).isEmpty());
        EXPECT_EQ(accessible->role(),
                  found->isCheckable() ? QAccessible::CheckBox : QAccessible::Button);
    }
}

}  // namespace
}  // namespace tessellon
