// Shortcuts that place one window, on every window manager: real key presses, real programs, and
// where their windows end up.
#include "desktop_fixture.h"
#include "place_shortcuts.h"

#include <array>

namespace tessellon::desktop {
namespace {

using SnapTest = WindowManagerTest;

TEST_P(SnapTest, everyPlaceIsExactAndRestoreGivesTheFirstFrameBack) {
    useProgram();
    const Frame original{201, 150, 703, 500};
    const xcb_window_t window = startClock(original);
    for (const Shortcut& shortcut : placeShortcuts) {
        ASSERT_EQ(snap(window, shortcut.held, shortcut.key, shortcut.target), shortcut.target);
    }
    EXPECT_EQ(snap(window, Held::controlAlt, Key::backspace, original), original);
    // There is nothing left to restore now.
    EXPECT_EQ(afterPress(window, Held::controlAlt, Key::backspace), original);
}

TEST_P(SnapTest, centerKeepsTheSize) {
    useProgram();
    const xcb_window_t window = startClock({100, 100, 800, 600});
    const Frame centered{560, 252, 800, 601};
    EXPECT_EQ(snap(window, Held::controlAlt, Key::c, centered), centered);
}

TEST_P(SnapTest, programsOfSeveralToolkits) {
    useProgram();
    struct Client {
        std::vector<std::string> command;
        bool wholeCells = false;
    };
    const std::vector<Client> clients{
        {{"xterm"}, true},                // resizes in whole cells
        {{"mousepad"}},                   // GTK
        {{"gtk3-demo"}},                  // GTK with decorations and shadow of its own
        {{"/usr/lib/qt6/bin/linguist"}},  // Qt
    };
    for (const Client& client : clients) {
        const xcb_window_t window = desktop().startWithWindow(client.command);
        const auto& name = client.command.front();
        const auto expect = [&](Key key, const Frame& target) {
            desktop().windows().activate(window);
            desktop().keyboard().combination(Held::controlAlt, key);
            EXPECT_EQ(client.wholeCells ? desktop().windows().settleWithinIncrements(window, target)
                                        : desktop().windows().settle(window, target),
                      target)
                << name;
        };
        const Frame original = desktop().windows().place(window, {240, 160, 900, 640});
        expect(Key::left, leftHalf);
        expect(Key::i, topRight);
        expect(Key::e, leftTwoThirds);
        expect(Key::backspace, original);
    }
}

TEST_P(SnapTest, aMaximizedWindowIsSnapped) {
    useProgram();
    const std::vector<std::vector<std::string>> clients{{"mousepad"}, {"gtk3-demo"}};
    for (const auto& client : clients) {
        const xcb_window_t window = desktop().startWithWindow(client);
        desktop().windows().maximize(window);
        EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf) << client.front();
        EXPECT_FALSE(desktop().windows().hasState(window, "_NET_WM_STATE_MAXIMIZED_HORZ"));
        EXPECT_EQ(snap(window, Held::controlAlt, Key::i, topRight), topRight) << client.front();
    }
}

TEST_P(SnapTest, theSameShortcutStepsThroughSizes) {
    useProgram();
    const xcb_window_t window = startClock({300, 200, 700, 500});
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    program().waitUntilIdle();
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftThird), leftThird);
    program().waitUntilIdle();
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftTwoThirds), leftTwoThirds);
    program().waitUntilIdle();
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    // Moved by hand, the window starts again at the half.
    desktop().windows().place(window, {40, 60, 700, 500});
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    program().change({{"cycle", false}});
    program().waitUntilIdle();
    EXPECT_EQ(afterPress(window, Held::controlAlt, Key::left), leftHalf);
}

TEST_P(SnapTest, restoreWorksAfterARestartOfTheProgram) {
    useProgram();
    const Frame original{333, 222, 777, 555};
    const xcb_window_t window = startClock(original);
    ASSERT_EQ(snap(window, Held::controlAlt, Key::i, topRight), topRight);
    program().waitUntilIdle();
    EXPECT_EQ(program().stop(), (ProcessEnd{.exitCode = 0, .signal = std::nullopt}));
    program().start();
    EXPECT_EQ(snap(window, Held::controlAlt, Key::backspace, original), original);
}

INSTANTIATE_TEST_SUITE_P(On, SnapTest, testedWindowManagers(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
