// Key presses under the conditions that real keyboards and other programs bring: locks, layouts,
// combinations that somebody else holds, a keyboard that somebody else holds.
#include "desktop_fixture.h"

#include <string>

namespace tessellon::desktop {
namespace {

constexpr Frame original{300, 200, 700, 500};

using KeyboardTest = WindowManagerTest;

TEST_P(KeyboardTest, locksDoNotMatter) {
    useProgram();
    const xcb_window_t window = startClock(original);
    desktop().keyboard().tap(Key::capsLock);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    desktop().keyboard().tap(Key::numLock);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::u, topLeft), topLeft);
    desktop().keyboard().tap(Key::capsLock);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::i, topRight), topRight);
}

INSTANTIATE_TEST_SUITE_P(On, KeyboardTest, testedWindowManagers(), windowManagerName);

using HeldCombinationTest = WindowManagerTest;

// The window manager keeps the combinations that it comes with, the program has all others.
TEST_P(HeldCombinationTest, aCombinationHeldBySomebodyElseStaysWithItsHolder) {
    useDesktop(Monitors::one, WindowManagerKeys::asShipped);
    programMaySpeak();
    program().start();
    EXPECT_NE(program().standardError().find("⌃⌥→ (Right half)"), std::string::npos)
        << program().standardError();
    EXPECT_EQ(program().standardError().find("⌃⌥U"), std::string::npos);
    const xcb_window_t window = startClock(original);
    const auto currentDesktop = [&] {
        return desktop().x().values(desktop().x().root(), "_NET_CURRENT_DESKTOP");
    };
    using Desktop = std::vector<std::uint32_t>;
    ASSERT_EQ(currentDesktop(), Desktop{0});
    desktop().windows().activate(window);
    desktop().keyboard().combination(Held::controlAlt, Key::right);
    EXPECT_TRUE(waitUntil([&] { return currentDesktop() == Desktop{1}; }));
    desktop().keyboard().combination(Held::controlAlt, Key::left);
    EXPECT_TRUE(waitUntil([&] { return currentDesktop() == Desktop{0}; }));
    program().waitUntilIdle();
    EXPECT_EQ(desktop().windows().visibleFrame(window), original);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::u, topLeft), topLeft);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::backspace, original), original);
}

// KWin, JWM and i3 come with none of our combinations.
INSTANTIATE_TEST_SUITE_P(On, HeldCombinationTest,
                         ::testing::Values("openbox", "xfwm4", "metacity", "marco", "fluxbox",
                                           "icewm"),
                         windowManagerName);

using KeyboardHolderTest = DesktopTest;

TEST_F(KeyboardHolderTest, aKeyboardHeldByAnotherClientKeepsShortcutsSilent) {
    useProgram();
    const xcb_window_t window = startClock(original);
    ASSERT_TRUE(desktop().keyboard().grab());
    EXPECT_EQ(afterPress(window, Held::controlAlt, Key::left), original);
    desktop().keyboard().ungrab();
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
}

using KeyboardLayoutTest = DesktopTest;

TEST_F(KeyboardLayoutTest, shortcutsAreKeysNotLetters) {
    useDesktop();
    desktop().run({"setxkbmap", "us", "dvorak"});
    program().start();
    const xcb_window_t window = startClock(original);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::u, topLeft), topLeft);
    desktop().run({"setxkbmap", "ru"});
    EXPECT_EQ(snap(window, Held::controlAlt, Key::i, topRight), topRight);
}

}  // namespace
}  // namespace tessellon::desktop
