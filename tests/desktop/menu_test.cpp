// The status item's panel over the windows of others: it is never in front of them, its tiles act
// on the one that was, and there are as many ways out as there are of going on with one's work.
#include "menu_fixture.h"
#include "typing_terminal.h"

#include <string>
#include <variant>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr Frame original{100, 300, 700, 450};
constexpr Frame otherFrame{100, 780, 700, 250};

// The panel that opens here lies clear of the windows.
constexpr Position pointerHome{1600, 40};

class MenuTest : public MenuTesting<WindowManagerTest> {
  protected:
    /// The window that has the input focus, as the server knows it.
    xcb_window_t focus() {
        const Reply<xcb_get_input_focus_reply_t> reply(xcb_get_input_focus_reply(
            desktop().x().connection(), xcb_get_input_focus(desktop().x().connection()), nullptr));
        return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
    }
    bool isStored(const char* key) {
        const auto settings = program().settings();
        const auto found = settings ? settings->find(key) : StoredValues::const_iterator{};
        return settings && found != settings->end() && std::get<bool>(found->second);
    }
};

TEST_P(MenuTest, theWindowInFrontStaysThereWhileThePanelIsUsed) {
    useProgram();
    const TypingTerminal terminal(desktop(), original);
    const xcb_window_t focused = focus();
    const auto expectInFront = [&](const char* when) {
        program().waitUntilIdle();
        EXPECT_EQ(desktop().windows().active(), terminal.window()) << when;
        EXPECT_EQ(focus(), focused) << when;
    };
    auto shown = openedAt(pointerHome);
    expectInFront("open");
    click(shown.switchOf(MenuSwitch::pause));
    EXPECT_TRUE(waitUntil([&] { return isStored("paused"); }));
    click(shown.switchOf(MenuSwitch::pause));
    EXPECT_TRUE(waitUntil([&] { return !isStored("paused"); }));
    expectInFront("clicked");
    for (const Key key : {Key::m, Key::space, Key::a, Key::tab, Key::tab}) {
        desktop().keyboard().tap(key);
    }
    expectInFront("typed into");
    startAgain();
    EXPECT_TRUE(panel()) << "asked for again";

    click(shown.tile(MenuTile::rightHalf));
    EXPECT_EQ(desktop().windows().settleWithinIncrements(terminal.window(), rightHalf), rightHalf);
    EXPECT_TRUE(waitUntilClosed());
    expectInFront("snapped");
    EXPECT_EQ(terminal.textAfter(Key::slash), "/") << "the terminal got what was not meant for it";
}

TEST_P(MenuTest, itIsUsedByKeyboardAlone) {
    useProgram();
    const auto window = startClock(original);
    desktop().windows().activate(window);
    const auto type = [&](const std::vector<Key>& keys) {
        for (const Key key : keys) {
            desktop().keyboard().tap(key);
        }
    };
    openedAt(pointerHome);
    type({Key::tab, Key::enter});
    EXPECT_EQ(desktop().windows().settle(window, leftHalf), leftHalf);
    EXPECT_TRUE(waitUntilClosed());

    opened();
    type({Key::tab, Key::right, Key::down, Key::enter});
    EXPECT_EQ(desktop().windows().settle(window, topRight), topRight);
    EXPECT_TRUE(waitUntilClosed());

    opened();
    type({Key::down, Key::down, Key::right, Key::right, Key::space});
    EXPECT_EQ(desktop().windows().settle(window, bottomLeft), bottomLeft);
    EXPECT_TRUE(waitUntilClosed());

    // Below the tiles comes "Save current", below that the first switch.
    opened();
    type({Key::down, Key::down, Key::down, Key::down, Key::down, Key::down, Key::space});
    EXPECT_TRUE(waitUntil([&] { return isStored("paused"); }));
    // The tiles are off now, so that "Save current" is the first.
    type({Key::up, Key::up, Key::down, Key::space});
    EXPECT_TRUE(waitUntil([&] { return !isStored("paused"); }));
    EXPECT_TRUE(panel());
    type({Key::escape});
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_EQ(desktop().windows().active(), window);
}

TEST_P(MenuTest, everyWayOutWorks) {
    useProgram();
    const TypingTerminal other(desktop(), otherFrame, "other");
    const TypingTerminal terminal(desktop(), original);

    openedAt(pointerHome);
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_EQ(terminal.textAfter(Key::slash), "/") << "Escape was for the panel";

    opened();
    const Frame below = desktop().windows().visibleFrame(other.window()).value_or(Frame{});
    click({below.x + below.width / 2, below.y + below.height / 2});
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_TRUE(waitUntil([&] { return desktop().windows().active() == other.window(); }));
    EXPECT_TRUE(waitUntil([&] { return !other.text().empty(); })) << "the click was for the window";

    openedAt(pointerHome);
    desktop().windows().activate(terminal.window());
    EXPECT_TRUE(waitUntilClosed()) << "another window is active";

    for (const Button button : {Button::left, Button::right}) {
        // A menu of the window manager may have come up at the last place.
        desktop().keyboard().tap(Key::escape);
        openedAt(pointerHome);
        desktop().pointer().moveTo({1200, 900});
        desktop().pointer().click(button);
        EXPECT_TRUE(waitUntilClosed()) << "the bare desktop was clicked";
    }

    // Not every window manager comes with more than one.
    desktop().keyboard().tap(Key::escape);
    desktop().run({"wmctrl", "-n", "2"});
    desktop().windows().activate(terminal.window());
    openedAt(pointerHome);
    desktop().run({"wmctrl", "-s", "1"});
    EXPECT_TRUE(waitUntilClosed()) << "another workspace is shown";
}

TEST_P(MenuTest, commandAndQEndsTheProgram) {
    useProgram();
    const TypingTerminal terminal(desktop(), original);
    const auto shown = openedAt(pointerHome);
    click(shown.switchOf(MenuSwitch::pause));
    program().waitUntilIdle();
    desktop().keyboard().combination({Key::leftSuper}, Key::q);
    EXPECT_EQ(program().process().waitForEnd(patience),
              (ProcessEnd{.exitCode = 0, .signal = std::nullopt}));
    EXPECT_TRUE(isStored("paused"));
    EXPECT_EQ(terminal.textAfter(Key::slash), "/") << "the keyboard is free again";

    program().start();
    click(openedAt(pointerHome).quit());
    EXPECT_EQ(program().process().waitForEnd(patience),
              (ProcessEnd{.exitCode = 0, .signal = std::nullopt}));
    programMayBeGone();
}

INSTANTIATE_TEST_SUITE_P(On, MenuTest, testedWindowManagers(), windowManagerName);

using MenuOverPrograms = MenuTesting<DesktopTest>;

TEST_F(MenuOverPrograms, aTileSnapsWindowsOfEveryToolkit) {
    useProgram();
    for (const char* command : {"mousepad", "gtk3-demo", "/usr/lib/qt6/bin/linguist"}) {
        const xcb_window_t window = desktop().startWithWindow({command});
        desktop().windows().activate(window);
        for (const auto& [tile, target] :
             {std::pair(MenuTile::leftHalf, leftHalf), std::pair(MenuTile::maximize, usableArea),
              std::pair(MenuTile::bottomLeft, bottomLeft)}) {
            click(openedAt(pointerHome).tile(tile));
            EXPECT_EQ(desktop().windows().settle(window, target), target) << command;
            EXPECT_TRUE(waitUntilClosed());
        }
    }
}

TEST_F(MenuOverPrograms, theWindowInFrontMayDieBeforeATileIsClicked) {
    useProgram();
    constexpr Frame below{300, 600, 640, 420};
    const xcb_window_t survivor = startClock(below, "survivor");
    const xcb_window_t victim = startClock(original, "victim");
    desktop().windows().activate(victim);
    // Under focus rules of its own the window manager may make the survivor the active one, which
    // closes the panel; a tile must not act on it in either case.
    const auto shown = openedAt(pointerHome);
    xcb_kill_client(desktop().x().connection(), victim);
    desktop().x().sync();
    program().waitUntilIdle();
    click(shown.tile(MenuTile::leftHalf));
    EXPECT_TRUE(waitUntilClosed());
    program().waitUntilIdle();
    EXPECT_EQ(desktop().windows().visibleFrame(survivor), below);
    desktop().windows().activate(survivor);
    click(opened().tile(MenuTile::leftHalf));
    EXPECT_EQ(desktop().windows().settle(survivor, leftHalf), leftHalf);
}

TEST_F(MenuOverPrograms, panelAndLauncherGiveWayToEachOther) {
    useProgram();
    const xcb_window_t window = startClock(original);
    desktop().windows().activate(window);
    const auto launcherIsOpen = [&] { return pictureOfWidth(launcherWidth).has_value(); };
    for (int round = 0; round < 2; ++round) {
        openedAt(pointerHome);
        desktop().keyboard().combination({Key::rightSuper}, Key::slash);
        EXPECT_TRUE(waitUntil(launcherIsOpen));
        EXPECT_TRUE(waitUntilClosed());
        startAgain();
        EXPECT_TRUE(waitUntilOpen());
        EXPECT_TRUE(waitUntil([&] { return !launcherIsOpen(); }));
        // The keyboard is the panel's.
        program().waitUntilIdle();
        desktop().keyboard().tap(Key::tab);
        desktop().keyboard().tap(Key::enter);
        EXPECT_TRUE(waitUntilClosed());
        EXPECT_EQ(desktop().windows().settle(window, leftHalf), leftHalf);
        EXPECT_EQ(desktop().windows().active(), window);
        EXPECT_EQ(afterPress(window, Held::controlAlt, Key::backspace), original);
    }
}

}  // namespace
}  // namespace tessellon::desktop
