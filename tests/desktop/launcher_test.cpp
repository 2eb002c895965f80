// The launcher in the program as it runs: opened by its chord over a foreign window, typed into,
// and closed in every way there is.
#include "desktop_fixture.h"
#include "typing_terminal.h"

#include <cstdlib>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr Frame original{500, 300, 700, 450};

class LauncherTest : public WindowManagerTest {
  protected:
    /// A desktop with the program and, in front, a terminal that writes down what it is given.
    void useTerminalDesktop(WindowManagerKeys keys = WindowManagerKeys::released) {
        useDesktop(Monitors::one, keys);
        program().start();
        terminal = std::make_unique<TypingTerminal>(desktop(), original);
    }

    /// The frame of the panel while it is shown.
    std::optional<Frame> panel() { return pictureOfWidth(launcherWidth); }
    bool waitUntilOpen() {
        return waitUntil([&] { return panel().has_value(); });
    }
    bool waitUntilClosed() {
        return waitUntil([&] { return !panel(); });
    }

    /// The chord, and keys that are typed faster than anybody can follow.
    void pressChord(const std::vector<Key>& typed = {}) {
        desktop().keyboard().combinationThenTyped({Key::rightSuper}, Key::slash, typed);
    }

    std::unique_ptr<TypingTerminal> terminal;
};

TEST_P(LauncherTest, whatIsTypedAtOnceSnapsTheWindowInFront) {
    useTerminalDesktop();
    pressChord({Key::m, Key::a, Key::x, Key::enter});
    desktop().windows().settleWithinIncrements(terminal->window(), usableArea);
    EXPECT_TRUE(waitUntilClosed());

    pressChord({Key::u});
    desktop().windows().settleWithinIncrements(terminal->window(), topLeft);
    const auto frame = frameOf(terminal->window());
    EXPECT_EQ(frame.x, topLeft.x);
    EXPECT_EQ(frame.y, topLeft.y);
    EXPECT_LE(frame.width, topLeft.width);
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_EQ(terminal->textAfter(Key::slash), "/") << "the terminal got what was not meant for it";
}

using CommandKeyHolderTest = LauncherTest;

// The window manager has the command keys to itself, and gives on what is pressed after them.
TEST_P(CommandKeyHolderTest, combinationsThatBeginWithIt) {
    useTerminalDesktop(WindowManagerKeys::asShipped);
    programMaySpeak();
    desktop().pointer().jumpTo({original.x + 200, original.y + 200});
    pressChord();
    EXPECT_TRUE(waitUntilOpen());
    for (const Key key : {Key::m, Key::a, Key::x, Key::enter}) {
        desktop().keyboard().tap(key);
    }
    desktop().windows().settleWithinIncrements(terminal->window(), usableArea);
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_EQ(terminal->textAfter(Key::slash), "/");

    // In front is another window now.
    const xcb_window_t clock = startClock({300, 200, 700, 500});
    desktop().windows().activate(clock);
    program().waitUntilIdle();
    pressChord({Key::u});
    EXPECT_EQ(desktop().windows().settle(clock, topLeft), topLeft);
    EXPECT_TRUE(waitUntilClosed());

    // The pointer is over the bare desktop.
    desktop().pointer().jumpTo({1700, 900});
    program().waitUntilIdle();
    desktop().keyboard().press(Key::rightSuper);
    program().waitUntilIdle();
    desktop().keyboard().tap(Key::slash);
    desktop().keyboard().release(Key::rightSuper);
    EXPECT_TRUE(waitUntilOpen());
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_EQ(desktop().windows().active(), clock);
}

INSTANTIATE_TEST_SUITE_P(On, CommandKeyHolderTest, ::testing::Values("icewm"), windowManagerName);

TEST_P(LauncherTest, theWindowInFrontStaysActiveAndEveryWayOutWorks) {
    useDesktop(Monitors::twoSideBySide);
    program().start();
    const auto window = startClock({1100, 300, 500, 400});
    desktop().windows().activate(window);
    pressChord();
    ASSERT_TRUE(waitUntilOpen());
    const auto shown = panel().value_or(Frame{});
    EXPECT_EQ(shown.x + shown.width / 2, 960 + 480) << "on the display of the window";
    EXPECT_LE(std::abs(2 * shown.y + shown.height - (1080 + dockHeight)), 1);
    EXPECT_EQ(desktop().windows().active(), window);

    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
    pressChord();
    ASSERT_TRUE(waitUntilOpen());
    desktop().keyboard().press(Key::rightSuper);
    desktop().keyboard().press(Key::slash);
    EXPECT_TRUE(waitUntilClosed());
    desktop().keyboard().release(Key::slash);
    desktop().keyboard().release(Key::rightSuper);
    EXPECT_EQ(desktop().windows().active(), window);

    pressChord();
    ASSERT_TRUE(waitUntilOpen());
    desktop().pointer().moveTo({100, 900});
    desktop().pointer().click();
    EXPECT_TRUE(waitUntilClosed());

    desktop().windows().activate(window);
    pressChord();
    ASSERT_TRUE(waitUntilOpen());
    // Top row, second from the left: the right half of its display.
    desktop().pointer().moveTo({shown.x + 16 + 112 + 52, shown.y + 120});
    desktop().pointer().click();
    EXPECT_TRUE(waitUntilClosed());
    const Frame target{1444, 33, 468, 1039};
    EXPECT_EQ(desktop().windows().settle(window, target), target);
}

TEST_P(LauncherTest, nothingOpensWhilePaused) {
    useTerminalDesktop();
    program().change({{"paused", true}});
    program().waitUntilIdle();
    pressChord();
    program().waitUntilIdle();
    EXPECT_FALSE(panel());
    EXPECT_EQ(terminal->textAfter(Key::slash), "/") << "the chord is kept all the same";
}

TEST_P(LauncherTest, itSurvivesTheDisplaysTheWindowInFrontAndTheWindowManager) {
    useDesktop(Monitors::twoSideBySide);
    program().start();
    xcb_window_t inFront = XCB_WINDOW_NONE;
    const auto open = [&](const char* title) {
        inFront = startClock({1100, 300, 500, 400}, title);
        desktop().windows().activate(inFront);
        pressChord();
        ASSERT_TRUE(waitUntilOpen()) << title;
    };
    const auto expectFreeKeyboard = [&](const char* after) {
        program().waitUntilIdle();
        if (panel()) {
            desktop().keyboard().tap(Key::escape);
        }
        EXPECT_TRUE(waitUntilClosed()) << after;
        EXPECT_TRUE(waitUntil([&] { return desktop().keyboard().grab(); })) << after;
        desktop().keyboard().ungrab();
    };
    open("displays");
    desktop().run({"xrandr", "--delmonitor", "R"});
    desktop().run({"xrandr", "--delmonitor", "L"});
    expectFreeKeyboard("displays");

    open("window");
    xcb_kill_client(desktop().x().connection(), inFront);
    desktop().x().sync();
    expectFreeKeyboard("window in front");

    open("window manager");
    desktop().killWindowManager();
    expectFreeKeyboard("window manager");
    desktop().startWindowManager(GetParam());
    open("window manager back");
    expectFreeKeyboard("window manager back");
}

INSTANTIATE_TEST_SUITE_P(On, LauncherTest, testedWindowManagers(), windowManagerName);

class OpenboxLauncherTest : public LauncherTest {};

TEST_P(OpenboxLauncherTest, theFocusMayFollowThePointerToATile) {
    useDesktop();
    std::ofstream(desktop().home() / ".config/openbox/rc.xml") << R"(<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><followMouse>yes</followMouse><focusDelay>0</focusDelay></focus>
  <keyboard/>
</openbox_config>
)";
    desktop().run({"openbox", "--reconfigure"});
    program().start();
    auto& pointer = desktop().pointer();
    const auto target = startClock({20, 300, 500, 400}, "target");
    const auto onTheWay = startClock({530, 300, 190, 500}, "on the way");
    // The window manager takes up its settings some time after it was told to. Until then one of
    // the two stays active whatever the pointer does.
    const auto activatedAt = [&](Position place) {
        pointer.moveTo(place);
        EXPECT_TRUE(waitUntil([&] { return desktop().x().windowManagerServes(); }));
        return desktop().windows().active();
    };
    ASSERT_TRUE(waitUntil([&] {
        return activatedAt({600, 500}) == onTheWay && activatedAt({250, 500}) == target;
    }));
    pressChord();
    ASSERT_TRUE(waitUntilOpen());
    const auto shown = panel().value_or(Frame{});
    pointer.moveTo({600, 500});
    ASSERT_TRUE(waitUntil([&] { return desktop().windows().active() == onTheWay; }));
    pointer.moveTo({shown.x + 16 + 112 + 52, shown.y + 120});
    program().waitUntilIdle();
    ASSERT_TRUE(panel());
    pointer.click();
    EXPECT_EQ(desktop().windows().settle(target, rightHalf), rightHalf);
}

// The letter that closed it is still held when the next one is typed, which is for the terminal.
TEST_P(OpenboxLauncherTest, whatIsTypedAfterItDoesNotStandInTheWayOfAShortcut) {
    useTerminalDesktop();
    auto& keyboard = desktop().keyboard();
    pressChord();
    ASSERT_TRUE(waitUntilOpen());
    keyboard.press(Key::i);
    EXPECT_TRUE(waitUntilClosed());
    keyboard.tap(Key::u);
    keyboard.release(Key::i);
    keyboard.combination(Held::controlAlt, Key::u);
    desktop().windows().settleWithinIncrements(terminal->window(), topLeft);
    EXPECT_EQ(frameOf(terminal->window()).x, topLeft.x);
}

INSTANTIATE_TEST_SUITE_P(On, OpenboxLauncherTest, ::testing::Values("openbox"), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
