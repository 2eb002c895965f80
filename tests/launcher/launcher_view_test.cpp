// The launcher's panel as it is drawn, typed into and clicked, with the whole launcher behind it;
// on Qt's platform without a display.
#include "launcher/launcher_view.h"

#include "fakes/panel_view_fixture.h"
#include "fakes/widgets.h"
#include "launcher/launcher.h"
#include "launcher/qt_launcher_views.h"
#include "ui/chip.h"
#include "ui/palette.h"
#include "ui/panel_scroll.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QCursor>
#include <QDeadlineTimer>
#include <algorithm>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {
namespace {

class LauncherViewTest : public PanelViewTest<LauncherView> {
  protected:
    void TearDown() override {
        launcher.close(Launcher::Activation::none);
        settle();
    }

    void openLauncher() {
        launcher.toggle();
        settle();
    }
    QLineEdit& field() const { return *all<QLineEdit>(view()).front(); }
    LauncherTile& tile(SnapAction action) const {
        const auto tiles = all<LauncherTile>(view());
        const auto found = std::ranges::find(tiles, action, &LauncherTile::action);
        return found != tiles.end() ? **found : throw std::runtime_error("no such tile");
    }
    /// The place of a tile in the panel.
    QRect placeOf(SnapAction action) const {
        const auto& found = tile(action);
        return {found.mapTo(&view(), QPoint()), found.size()};
    }
    std::vector<SnapAction> shownTiles() const {
        std::vector<SnapAction> actions;
        for (const auto* const found : shown<LauncherTile>(view())) {
            actions.push_back(found->action());
        }
        return actions;
    }
    std::vector<SnapAction> selectedTiles() const {
        std::vector<SnapAction> actions;
        for (const auto* const found : shown<LauncherTile>(view())) {
            if (found->isSelected()) {
                actions.push_back(found->action());
            }
        }
        return actions;
    }

    void type(std::string_view text) {
        for (const char c : text) {
            TypedKey key;
            key.symbol = static_cast<unsigned char>(c);
            key.event.characters = std::string(1, c);
            key.event.charactersIgnoringModifiers = key.event.characters;
            press(key);
        }
    }
    void key(std::uint32_t keySymbol, std::uint64_t modifiers = 0, std::string characters = {}) {
        TypedKey typed;
        typed.symbol = keySymbol;
        typed.event.modifiers = modifiers;
        typed.event.characters = characters;
        typed.event.charactersIgnoringModifiers = std::move(characters);
        press(typed);
    }
    void keyAt(std::uint32_t keyCode) {
        TypedKey typed;
        typed.event.keyCode = keyCode;
        press(typed);
    }
    static void movePointer(const QPoint& position) {
        QCursor::setPos(position);
        QApplication::processEvents();
    }
    static QPoint centerOf(const QWidget& widget) {
        return widget.mapToGlobal(widget.rect().center());
    }

    KeyBindings bindings{defaults_, store};
    QtLauncherViews views{keyboard, bindings, compositing};
    Launcher launcher{engine(), views, beep, notifications};
};

using enum SnapAction;

TEST_F(LauncherViewTest, IsCentredAndLaidOutInFourColumns) {
    openLauncher();
    const auto geometry = view().geometry();
    EXPECT_EQ(geometry.width(), 472);
    EXPECT_EQ(keyboard.frame().width, 472);
    EXPECT_EQ(keyboard.frame().midX(), 960);
    EXPECT_EQ(keyboard.frame().midY(), 527.5);

    const int top = placeOf(leftHalf).y();
    EXPECT_EQ(placeOf(leftHalf), QRect(16, top, 104, 96));
    EXPECT_EQ(placeOf(bottomHalf), QRect(16 + 3 * 112, top, 104, 96));
    EXPECT_EQ(placeOf(topLeft), QRect(16, top + 104, 104, 96));
    EXPECT_EQ(geometry.height(), placeOf(previousDisplay).bottom() + 1 + 16);
    EXPECT_GE(top, 16 + 2 * 10 + 16 + 12);
    EXPECT_EQ(shownTiles().size(), 19U);
    EXPECT_EQ(field().placeholderText().trimmed(), QStringLiteral("Snap App 100…"));
}

TEST_F(LauncherViewTest, TypingNarrowsTheTilesAndReturnSnaps) {
    openLauncher();
    const auto size = view().size();
    EXPECT_TRUE(field().hasFocus());
    type("half");
    EXPECT_EQ(shownTiles(), (std::vector{leftHalf, rightHalf, topHalf, bottomHalf}));
    key(symbol::backspace);
    key(symbol::backspace);
    key(symbol::backspace);
    EXPECT_EQ(field().text(), QStringLiteral("h"));
    type(" lf");
    EXPECT_EQ(selectedTiles(), std::vector<SnapAction>{});
    launcher.model()->setQuery("right");
    EXPECT_EQ(field().text(), QStringLiteral("right"));
    EXPECT_EQ(shownTiles(),
              (std::vector{rightHalf, topRight, bottomRight, rightThird, rightTwoThirds}));
    EXPECT_EQ(tile(rightTwoThirds).geometry().topLeft(), tile(rightHalf).pos() + QPoint(0, 104));
    EXPECT_EQ(view().size(), size) << "the panel does not jump while it is typed into";

    keyAt(virtual_key::rightArrow);
    keyAt(virtual_key::downArrow);
    EXPECT_EQ(selectedTiles(), std::vector{rightTwoThirds});
    keyAt(virtual_key::upArrow);
    EXPECT_EQ(selectedTiles(), std::vector{rightHalf});
    keyAt(virtual_key::returnKey);
    EXPECT_FALSE(launcher.isOpen());
    EXPECT_FALSE(keyboard.isTaken());
    EXPECT_EQ(at(window_).frame, (Rect{960, 25, 960, 1055}));
}

TEST_F(LauncherViewTest, LettersSnapWhileTheFieldIsEmptyAndAreTextAfterwards) {
    openLauncher();
    type(" u");
    EXPECT_EQ(field().text(), QStringLiteral(" u"));
    key(symbol::backspace);
    key(symbol::backspace);
    type("u");
    EXPECT_FALSE(launcher.isOpen());
    EXPECT_EQ(at(window_).frame, (Rect{0, 25, 960, 528}));
}

TEST_F(LauncherViewTest, EditingKeysWorkAsInAnyField) {
    openLauncher();
    QApplication::clipboard()->setText(QStringLiteral("bottom"));
    type("maxi mum");
    key(symbol::backspace, modifier_flag::control);
    EXPECT_EQ(field().text(), QStringLiteral("maxi "));
    key(symbol::home);
    key(symbol::keypadFour, 0, "4");
    EXPECT_EQ(field().text(), QStringLiteral("4maxi "));
    key('a', modifier_flag::control, "\x01");
    EXPECT_EQ(field().selectedText(), QStringLiteral("4maxi "));
    key('v', modifier_flag::control, "\x16");
    EXPECT_EQ(field().text(), QStringLiteral("bottom"));
    EXPECT_EQ(shownTiles(), (std::vector{bottomHalf, bottomLeft, bottomRight}));

    field().deselect();
    TypedKey cyrillic;
    cyrillic.symbol = symbol::cyrillicEf;
    cyrillic.event.keyCode = 0;
    cyrillic.event.charactersIgnoringModifiers = "ф";
    cyrillic.event.modifiers = modifier_flag::control;
    press(cyrillic);
    EXPECT_EQ(field().selectedText(), QStringLiteral("bottom")) << "by the place of the key";
    cyrillic.event.characters = "ф";
    cyrillic.event.modifiers = 0;
    press(cyrillic);
    EXPECT_EQ(field().text(), QStringLiteral("ф"));

    key('c', modifier_flag::command, "c");
    EXPECT_EQ(field().text(), QStringLiteral("ф")) << "a command is no text";
}

TEST_F(LauncherViewTest, AClickRunsTheTileAndOutlivesTheClose) {
    openLauncher();
    auto& clicked = tile(rightHalf);
    click(clicked);
    EXPECT_FALSE(launcher.isOpen());
    EXPECT_EQ(at(window_).frame, (Rect{960, 25, 960, 1055}));
    EXPECT_EQ(desktop_.activations(), std::vector<Pid>{editor});
    click(clicked);  // the second press of a double click finds a closed panel
    settle();
    EXPECT_EQ(desktop_.activations().size(), 1U);
}

TEST_F(LauncherViewTest, OnlyAPointerThatMovesSelects) {
    openLauncher();
    const auto spot = centerOf(tile(rightThird));
    launcher.close(Launcher::Activation::none);
    settle();

    movePointer(spot);
    openLauncher();
    EXPECT_EQ(selectedTiles(), std::vector{leftHalf}) << "it only rests where the tile came up";
    movePointer(spot + QPoint(1, 0));
    EXPECT_EQ(selectedTiles(), std::vector{rightThird});
    keyAt(virtual_key::leftArrow);
    moveTo(tile(rightThird), {60, 60});
    EXPECT_EQ(selectedTiles(), std::vector{centerThird}) << "it was there before";
    movePointer(centerOf(tile(center)));
    EXPECT_EQ(selectedTiles(), std::vector{center});

    movePointer(centerOf(tile(rightHalf)));
    type("right");
    EXPECT_EQ(selectedTiles(), std::vector{rightHalf}) << "the first one, not the one below it";
    moveTo(tile(topRight), tile(topRight).mapFromGlobal(QCursor::pos()));
    EXPECT_EQ(selectedTiles(), std::vector{rightHalf});
}

TEST_F(LauncherViewTest, TabReachesTheTilesAndTypingComesBack) {
    openLauncher();
    key(symbol::tab);
    key(symbol::tab);
    EXPECT_TRUE(tile(rightHalf).hasFocus());
    EXPECT_EQ(selectedTiles(), std::vector{rightHalf});
    keyAt(virtual_key::rightArrow);
    EXPECT_EQ(selectedTiles(), std::vector{topHalf});
    EXPECT_TRUE(tile(topHalf).hasFocus()) << "Space and Return mean the same tile";
    type("ha");
    EXPECT_TRUE(field().hasFocus());
    EXPECT_EQ(field().text(), QStringLiteral("ha"));
    key(symbol::tab);
    type("v");
    EXPECT_EQ(field().text(), QStringLiteral("hav"));
    EXPECT_TRUE(shownTiles().empty());
    key(symbol::backspace);
    key(symbol::tab);
    type(" ");
    settle();
    EXPECT_FALSE(launcher.isOpen());
    EXPECT_EQ(at(window_).frame, (Rect{0, 25, 960, 1055}));
}

TEST_F(LauncherViewTest, NoMatchesSaysSoAndBeepsAtReturn) {
    openLauncher();
    type("xyz");
    EXPECT_TRUE(shownTiles().empty());
    const QRect message(200, placeOf(leftHalf).y() + 30, 72, 20);
    const auto inked = [&] {
        const auto image = view().grab(message).toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                count += image.pixelColor(x, y).lightness() < 180 ? 1 : 0;
            }
        }
        return count;
    };
    EXPECT_GT(inked(), 50);
    keyAt(virtual_key::returnKey);
    EXPECT_EQ(beep.count(), 1);
    EXPECT_TRUE(launcher.isOpen());
    key(symbol::backspace);
    key(symbol::backspace);
    EXPECT_EQ(selectedTiles(), std::vector{maximize});
    type("yz");
    EXPECT_GT(inked(), 50);
    launcher.model()->setQuery("center third");
    EXPECT_EQ(inked(), 0) << "a tile at the left edge, and no message";
}

TEST_F(LauncherViewTest, LosingTheKeyboardCloses) {
    openLauncher();
    EXPECT_EQ(QApplication::activeWindow(), &view());
    keyboard.lose();
    EXPECT_FALSE(launcher.isOpen());
    EXPECT_EQ(QApplication::activeWindow(), nullptr);
    EXPECT_TRUE(desktop_.activations().empty());
    settle();
    EXPECT_TRUE(QApplication::topLevelWidgets().empty());
}

TEST_F(LauncherViewTest, ColoursTellSelectionAndGroup) {
    openLauncher();
    const auto image = view().grab().toImage();
    const auto inside = [&](SnapAction action, QPoint at) {
        return image.pixelColor(placeOf(action).topLeft() + at);
    };
    const QPoint plain(8, 48);
    const QPoint edge(52, 0);
    EXPECT_TRUE(isBlend(inside(leftHalf, plain), palette::teal, 0.5));
    EXPECT_TRUE(isBlend(inside(leftHalf, edge), palette::ink, 1));
    EXPECT_TRUE(isBlend(inside(topRight, plain), palette::amber, 0.2));
    EXPECT_TRUE(isBlend(inside(topRight, edge), palette::amber, 0.2));
    EXPECT_TRUE(isBlend(inside(leftThird, plain), palette::pink, 0.2));
    EXPECT_TRUE(isBlend(inside(restore, plain), palette::lavender, 0.2));
    EXPECT_TRUE(isBlend(image.pixelColor(236, 0), palette::ink, 1));
    EXPECT_TRUE(isBlend(image.pixelColor(236, 1), palette::ink, 1));
    EXPECT_TRUE(isBlend(image.pixelColor(236, 3), palette::paper, 1));
    EXPECT_TRUE(isBlend(image.pixelColor(30, 20), palette::cream, 1));
    EXPECT_EQ(image.pixelColor(1, 1).alpha(), 0) << "the corners are round";
}

TEST_F(LauncherViewTest, WithoutACompositorTheCornersAreCutOff) {
    openLauncher();
    EXPECT_TRUE(view().mask().isEmpty());
    launcher.close(Launcher::Activation::none);
    settle();

    compositing.setActive(false);
    openLauncher();
    const auto mask = view().mask();
    EXPECT_FALSE(mask.contains(QPoint(1, 1)));
    EXPECT_FALSE(mask.contains(view().rect().bottomRight()));
    EXPECT_TRUE(mask.contains(QPoint(236, 0)));
    EXPECT_TRUE(mask.contains(view().rect().center()));
    const auto image = view().grab().toImage();
    for (int x = 0; x < 30; ++x) {
        if (mask.contains(QPoint(x, 3))) {
            EXPECT_EQ(image.pixelColor(x, 3).alpha(), 255) << "nothing is left to shine through";
        }
    }
}

TEST_F(LauncherViewTest, LongNamesLeaveRoomToType) {
    const std::string name = "The Extraordinarily Long Name of an Application\nin Two Lines";
    desktop_.launch({300, std::nullopt, name, ActivationPolicy::regular, /*hidden=*/false});
    desktop_.focus(open(300, {0, 0, 800, 600}));
    openLauncher();
    const auto& chip = *all<Chip>(view()).front();
    EXPECT_GT(field().width(), 200);
    EXPECT_LT(field().geometry().right(), chip.geometry().left());
    EXPECT_EQ(chip.geometry().right() + 1, 16 + 440 - 12);
    EXPECT_TRUE(chip.text().endsWith(QChar(0x2026)));
    EXPECT_FALSE(field().placeholderText().contains(QLatin1Char('\n')));

    launcher.close(Launcher::Activation::none);
    settle();
    desktop_.launch({301, std::nullopt, "\u202E" + std::string(2'000'000, 'W'),
                     ActivationPolicy::regular, /*hidden=*/false});
    desktop_.focus(open(301, {0, 0, 800, 600}));
    openLauncher();
    EXPECT_LT(field().placeholderText().size(), 1000) << "measuring all of it would take long";
    EXPECT_FALSE(field().placeholderText().contains(QChar(0x202E)));
}

TEST_F(LauncherViewTest, TheTilesScrollWhereTheScreenIsLow) {
    desktop_.setScreens({screen(1, {0, 0, 1920, 480}, {0, 0, 1920, 450})});
    openLauncher();
    EXPECT_EQ(keyboard.frame().height, 450);
    EXPECT_EQ(placeOf(leftHalf).x(), 16);
    auto& scroll = *all<PanelScroll>(view()).front();
    EXPECT_GT(scroll.largestOffset(), 100);
    EXPECT_TRUE(isWholeInView(field()));
    for (int row = 0; row < 4; ++row) {
        keyAt(virtual_key::downArrow);
        EXPECT_TRUE(isWholeInView(tile(launcher.model()->matches().at(
            static_cast<std::size_t>(launcher.model()->selection())))));
    }
    EXPECT_EQ(selectedTiles(), std::vector{restore});
    EXPECT_FALSE(isWholeInView(tile(leftHalf)));

    // What the pointer comes to is selected and stays where it is.
    turnWheel(tile(center), 12000);
    EXPECT_EQ(scroll.offset(), 0);
    turnWheel(tile(center), -30);
    const double offset = scroll.offset();
    EXPECT_GT(offset, 0);
    movePointer(tile(rightHalf).mapToGlobal(QPoint(50, 90)));
    EXPECT_EQ(selectedTiles(), std::vector{rightHalf});
    EXPECT_EQ(scroll.offset(), offset);

    type("half");
    EXPECT_EQ(scroll.largestOffset(), 0) << "they all have room";
    EXPECT_TRUE(isWholeInView(tile(bottomHalf)));
}

TEST_F(LauncherViewTest, AssistiveTechnologyFindsFieldAndTiles) {
    bindings.setCombo(std::nullopt, HotkeyTarget::snap(maximize));
    openLauncher();
    auto* const search = QAccessible::queryAccessibleInterface(&field());
    EXPECT_EQ(search->role(), QAccessible::EditableText);
    EXPECT_EQ(search->text(QAccessible::Name), QStringLiteral("Snap App 100…"));

    auto* const first = QAccessible::queryAccessibleInterface(&tile(leftHalf));
    EXPECT_EQ(first->role(), QAccessible::Button);
    EXPECT_EQ(first->text(QAccessible::Name), QStringLiteral("Left Half, Control Alt Left Arrow"));
    EXPECT_EQ(first->text(QAccessible::Description), QStringLiteral("Selected"));
    auto* const bare = QAccessible::queryAccessibleInterface(&tile(maximize));
    EXPECT_EQ(bare->text(QAccessible::Name), QStringLiteral("Maximize"));

    bare->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    for (QDeadlineTimer deadline(5000); launcher.isOpen() && !deadline.hasExpired();) {
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    settle();
    EXPECT_FALSE(launcher.isOpen());
    EXPECT_EQ(at(window_).frame, (Rect{0, 25, 1920, 1055}));
}

}  // namespace
}  // namespace tessellon
