// The status item's panel as it is drawn and clicked.
#include "menu/menu_label_view.h"
#include "menu/menu_view_fixture.h"
#include "ui/fonts.h"
#include "ui/text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tessellon {
namespace {

using enum SnapAction;

TEST_F(MenuViewTest, TheTilesStandInFourColumns) {
    openMenu();
    EXPECT_EQ(view().width(), 330);
    EXPECT_EQ(view().screenFrame().midX(), 910);
    std::vector<SnapAction> offered;
    for (const auto* const found : all<SnapTile>(view())) {
        offered.push_back(found->action());
    }
    EXPECT_EQ(offered, (std::vector{leftHalf, rightHalf, topHalf, bottomHalf, topLeft, topRight,
                                    bottomLeft, bottomRight, leftThird, centerThird, rightThird,
                                    leftTwoThirds, maximize, center, nextDisplay, restore}));
    EXPECT_EQ(placeOf(leftHalf).left(), 12);
    EXPECT_EQ(placeOf(bottomHalf).right() + 1, 330 - 12);
    for (std::size_t i = 0; i < offered.size(); ++i) {
        const QRect place = placeOf(offered[i]);
        EXPECT_NEAR(place.width(), 71.25, 1);
        EXPECT_EQ(place.height(), placeOf(leftHalf).height());
        if (i % 4 != 0) {
            EXPECT_EQ(place.left() - placeOf(offered[i - 1]).right() - 1, 7);
        }
        if (i >= 4) {
            EXPECT_EQ(place.top() - placeOf(offered[i - 4]).bottom() - 1, 7);
        }
    }
}

TEST_F(MenuViewTest, AClickOnATileSnapsAndOutlivesTheClose) {
    openMenu();
    auto& clicked = tile(leftHalf);
    click(clicked, {1, 30});
    EXPECT_TRUE(menu.isOpen()) << "beside the tile";
    click(clicked);
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(at(window_).frame, leftHalfFrame);
    at(window_).frame = {100, 100, 800, 600};
    click(clicked);  // the second press of a double click finds a closed panel
    settle();
    EXPECT_EQ(at(window_).frame, (Rect{100, 100, 800, 600}));
    EXPECT_TRUE(QApplication::topLevelWidgets().empty());
}

TEST_F(MenuViewTest, PausingDimsTheTilesAtOnce) {
    openMenu();
    const QPoint ground = placeOf(topLeft).topLeft() + QPoint(6, 30);
    EXPECT_EQ(state(), "Snapping");
    EXPECT_TRUE(isBlend(picture().pixelColor(ground), palette::amber, 0.22));

    click(control("Pause snapping"));
    EXPECT_TRUE(defaults_.boolForKey(preference::paused));
    EXPECT_EQ(state(), "Paused");
    EXPECT_TRUE(isBlend(picture().pixelColor(ground), palette::amber, 0.22 * 0.45));
    click(tile(leftHalf));
    EXPECT_TRUE(menu.isOpen());
    EXPECT_EQ(at(window_).frame, (Rect{100, 100, 800, 600}));

    defaults_.edit(preference::paused, PropertyValue(false));
    EXPECT_EQ(state(), "Snapping");
    EXPECT_FALSE(control("Pause snapping").isChecked());
    EXPECT_TRUE(tile(leftHalf).isEnabled());
}

TEST_F(MenuViewTest, WithoutAWindowTheTilesRestEvenWhenNothingIsPaused) {
    desktop_.close(window_);
    openMenu();
    EXPECT_FALSE(tile(leftHalf).isEnabled());
    EXPECT_EQ(state(), "Snapping");
    defaults_.setBool(preference::paused, true);
    defaults_.setBool(preference::paused, false);
    EXPECT_FALSE(tile(leftHalf).isEnabled());
}

TEST_F(MenuViewTest, TheApplicationIsIgnoredAndNotAnyMore) {
    setIgnoredApplications(defaults_, {"com.other"});
    openMenu();
    auto& ignore = control<PillToggle>("Ignore this app");
    EXPECT_EQ(ignore.accessibleDescription(),
              QStringLiteral("App 100 never snaps while this is on"));
    click(ignore);
    EXPECT_TRUE(ignore.isChecked());
    EXPECT_TRUE(isIgnored(defaults_, "com.editor"));
    openMenu();
    auto& again = control<PillToggle>("Ignore this app");
    EXPECT_TRUE(again.isChecked());
    click(again);
    EXPECT_FALSE(again.isChecked());
    EXPECT_EQ(ignoredApplications(defaults_), std::vector<std::string>{"com.other"});
}

TEST_F(MenuViewTest, WithoutAnApplicationNothingIsIgnored) {
    // What the panel shows when it finds nobody in front.
    MenuModel model(std::nullopt, Snapping::unavailable, std::nullopt, defaults_, store);
    MenuView alone(model, defaults_, compositing, {});
    auto* const ignore = all<PillToggle>(alone).at(1);
    EXPECT_EQ(ignore->accessibleDescription(), QStringLiteral("No app in front"));
    click(*ignore);
    EXPECT_FALSE(ignore->isChecked());
    EXPECT_TRUE(ignoredApplications(defaults_).empty());
}

TEST_F(MenuViewTest, TilingShowsItsButtonAndKeepsTheHeight) {
    openMenu();
    const auto frame = view().screenFrame();
    const auto& button = control("Tile now");
    auto& tiling = control("Tile this display");
    EXPECT_FALSE(button.isVisible());
    EXPECT_TRUE(tiling.accessibleDescription().endsWith("Turn on to tile on demand"));
    click(tiling);
    EXPECT_TRUE(defaults_.boolForKey(preference::tilingEnabled));
    EXPECT_TRUE(button.isVisible());
    EXPECT_TRUE(tiling.accessibleDescription().endsWith("Master on the left, the rest stacked"));
    EXPECT_EQ(view().screenFrame(), frame);
    const auto& lines = all<MenuSwitchText>(view()).at(2)->lines();
    EXPECT_EQ(lines.size(), 2) << "beside the button";
    EXPECT_EQ(lines.join(' '), QStringLiteral("Master on the left, the rest stacked"));

    open(browser, {300, 300, 500, 500});
    click(control("Tile now"));
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(at(window_).frame.x, 0);
    EXPECT_EQ(at(window_).frame.height, 1055);
}

TEST_F(MenuViewTest, TheFirstFourArrangementsAreListed) {
    openMenu();
    const int without = view().height();
    std::vector<Arrangement> saved;
    for (const auto* const name : {"Writing", "Two\nlines", "C", "D", "E", "F"}) {
        saved.push_back(arrangement(name));
    }
    saved[1].combo = KeyCombo{49, modifier_flag::control | modifier_flag::option, "Space"};
    saved[2].combo = KeyCombo{-1, 0, ""};
    store.save(saved);
    openMenu();
    const auto rows = all<MenuArrangementRow>(view());
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[1]->accessibleName(), QStringLiteral("Two lines"));
    EXPECT_TRUE(rows[1]->accessibleDescription().endsWith("Control Alt Space"));
    EXPECT_EQ(rows[2]->accessibleDescription(), rows[0]->accessibleDescription())
        << "a shortcut that was taken away is none";
    EXPECT_EQ(view().height(), without + 4 * (rows[0]->height() + 6));

    click(*rows[0]);
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(at(window_).frame, leftHalfFrame);
    openMenu();
    click(control("Save current"));
    EXPECT_FALSE(menu.isOpen());
    EXPECT_EQ(store.load().size(), 7U);
}

TEST_F(MenuViewTest, ThePointerMakesATileGrow) {
    openMenu();
    auto& hovered = tile(topRight);
    auto& style = hovered.tileStyle();
    const QRect place = placeOf(topRight);
    const QPoint ground(6, 30);
    enter(hovered, {1, 1});
    EXPECT_FALSE(style.isHovering()) << "the corner of the widget is not the tile's";
    moveTo(hovered, hovered.rect().center());
    EXPECT_TRUE(style.isAnimating());
    EXPECT_NE(style.scale(), 1.05) << "not at once";
    auto image = picture();
    EXPECT_FALSE(style.isAnimating());
    EXPECT_EQ(style.scale(), 1.05);
    EXPECT_EQ(style.borderWidth(), 1.5);
    EXPECT_TRUE(isBlend(image.pixelColor(place.topLeft() + ground), palette::amber, 0.5));
    // 71 × 1.05 is nearly 2 pixels wider on each side, and nothing cuts the border off there.
    EXPECT_LT(image.pixelColor(place.left() - 2, place.center().y()).lightness(), 110);
    EXPECT_LT(image.pixelColor(place.right() + 2, place.center().y()).lightness(), 110);
    const auto siblings = hovered.parentWidget()->children();
    EXPECT_EQ(siblings.back(), &hovered) << "above its neighbours";

    sendMouse(hovered, QEvent::MouseButtonPress, hovered.rect().center());
    picture();
    EXPECT_EQ(style.scale(), 0.95);
    moveTo(hovered, {-20, -20});
    sendMouse(hovered, QEvent::MouseMove, {-20, -20});
    leave(hovered);
    picture();
    EXPECT_EQ(style.scale(), 1);
    EXPECT_EQ(style.fillOpacity(), 0.22);
    EXPECT_EQ(style.borderWidth(), 0);
    sendMouse(hovered, QEvent::MouseButtonRelease, {-20, -20});
    EXPECT_TRUE(menu.isOpen()) << "let go beside the tile";
    EXPECT_FALSE(style.isAnimating()) << "a panel at rest wakes nobody";
}

TEST_F(MenuViewTest, PausedTilesDoNotGrow) {
    openMenu();
    auto& hovered = tile(center);
    enter(hovered, hovered.rect().center());
    EXPECT_TRUE(hovered.tileStyle().isHovering());
    leave(hovered);
    defaults_.setBool(preference::paused, true);
    enter(hovered, hovered.rect().center());
    EXPECT_FALSE(hovered.tileStyle().isHovering());
}

TEST_F(MenuViewTest, TheFooterReachesTheProgram) {
    openMenu();
    click(control("Updates"));
    EXPECT_EQ(updater.checks(), 1);
    openMenu();
    click(control("Settings"));
    EXPECT_EQ(settingsOpened, 1);
    openMenu();
    EXPECT_EQ(control("Settings").accessibleDescription(), QStringLiteral("Super ,"));
    click(control("Quit"));
    EXPECT_EQ(application.terminations(), 1);
}

TEST_F(MenuViewTest, LongNamesLeaveTheRestReadable) {
    const std::string name = "The Extraordinarily Long Name of an Application\nin Two Lines";
    desktop_.launch({300, "com.long", name, ActivationPolicy::regular, /*hidden=*/false});
    desktop_.focus(open(300, {0, 0, 800, 600}));
    engine().snap(leftTwoThirds);
    auto saved = arrangement(std::string(2'000'000, 'W'));
    saved.combo = KeyCombo{300, modifier_flag::command, std::string(1000, 'W')};
    store.save(std::vector{saved});
    openMenu();
    EXPECT_EQ(view().width(), 330);
    const auto& lines = all<MenuSwitchText>(view()).at(1)->lines();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].contains("The Extraordinarily")) << lines[0].toStdString();
    EXPECT_EQ(lines[1], QStringLiteral("never snaps while this is on"));
    const auto image = picture();
    // The caps stand at the end of their row, before them the end of the name.
    const auto* const row = all<MenuArrangementRow>(view()).front();
    const int middle = row->mapTo(&view(), row->rect().center()).y();
    EXPECT_LT(image.pixelColor(330 - 12 - 8 - 1, middle).lightness(), 80);
    EXPECT_TRUE(isBlend(image.pixelColor(330 - 12 - 4, middle), palette::cream, 1));
    for (int y = 24; y < image.height() - 24; ++y) {
        for (const int x : {3, 7, 330 - 4, 330 - 8}) {
            EXPECT_TRUE(isBlend(image.pixelColor(x, y), palette::paper, 1)) << x << ", " << y;
        }
    }
}

TEST_F(MenuViewTest, NamesCannotTurnOurWords) {
    const std::string name = "Evil\u202Eapp\u2067\u200B";
    desktop_.launch({300, "com.evil", name, ActivationPolicy::regular, /*hidden=*/false});
    desktop_.focus(open(300, {0, 0, 800, 600}));
    engine().snap(leftHalf);
    store.save(std::vector{arrangement("a\u202Eb\x1B[1m\u200Dc")});
    openMenu();
    EXPECT_EQ(control("Ignore this app").accessibleDescription(),
              QStringLiteral("Evilapp never snaps while this is on"));
    EXPECT_EQ(all<MenuSwitchText>(view()).at(1)->lines().join(' '),
              QStringLiteral("\u2068Evilapp\u2069 never snaps while this is on"));
    EXPECT_EQ(all<MenuArrangementRow>(view()).at(0)->accessibleName(),
              QStringLiteral("ab[1m\u200Dc"));
    // A name that is written from right to left, whole in one line and broken into two.
    for (const QString& words :
         {QStringLiteral("אבג"), QStringLiteral("אבגד הוזח טיכל מנסע פצקר")}) {
        MenuSwitchText text({Symbol::plus, palette::ink, QString(), QString()}, nullptr);
        text.resize(190, 48);
        text.setSubtitle(words, QStringLiteral(" never snaps"));
        for (const auto& line : text.lines()) {
            EXPECT_EQ(line.count(QChar(0x2068)), line.count(QChar(0x2069))) << line.toStdString();
        }
        EXPECT_TRUE(text.lines().last().endsWith(QStringLiteral("\u2069 never snaps")));
        const QFont font = interfaceFont(10.5);
        EXPECT_EQ(textWidth(font, isolated(words)), textWidth(font, words)) << "they do not show";
    }
}

TEST_F(MenuViewTest, NamesOfKeysAreWholeUpToALimit) {
    std::vector<Arrangement> saved;
    for (const auto* const label : {"Page Down", "Keypad Enter", "WWWWWWWWWWWWWWWWWWWW"}) {
        saved.push_back(arrangement(label));
        saved.back().combo = KeyCombo{300, modifier_flag::control | modifier_flag::option, label};
    }
    store.save(saved);
    openMenu();
    const auto rows = all<MenuArrangementRow>(view());
    EXPECT_TRUE(rows[0]->accessibleDescription().endsWith("Control Alt Page Down"));
    EXPECT_TRUE(rows[1]->accessibleDescription().endsWith("Control Alt Keypad Enter"));
    EXPECT_TRUE(rows[2]->accessibleDescription().endsWith(QChar(0x2026)));
    EXPECT_GT(rows[2]->accessibleDescription().count('W'), 4);
}

TEST_F(MenuViewTest, WithoutACompositorTheCornersAreCutOff) {
    openMenu();
    EXPECT_TRUE(view().mask().isEmpty());
    EXPECT_EQ(picture().pixelColor(1, 1).alpha(), 0);
    compositing.setActive(false);
    const auto mask = view().mask();
    EXPECT_FALSE(mask.contains(QPoint(1, 1)));
    EXPECT_FALSE(mask.contains(view().rect().bottomRight()));
    EXPECT_TRUE(mask.contains(QPoint(165, 0)));
    const auto image = picture();
    for (int x = 0; x < 30; ++x) {
        if (mask.contains(QPoint(x, 3))) {
            EXPECT_EQ(image.pixelColor(x, 3).alpha(), 255) << "nothing is left to shine through";
        }
    }
}

}  // namespace
}  // namespace tessellon
