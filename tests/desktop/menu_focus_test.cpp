// The keyboard under the status item's panel: whose it is once another window becomes active.
#include "menu_fixture.h"

namespace tessellon::desktop {
namespace {

using MenuFocusTest = MenuTesting<WindowManagerTest>;

TEST_P(MenuFocusTest, theFirstWindowThatBecomesActiveTakesTheKeyboard) {
    useProgram();
    ASSERT_TRUE(waitUntil([&] { return !desktop().windows().active(); }));
    opened();
    ASSERT_TRUE(panel());
    EXPECT_FALSE(desktop().keyboard().grab()) << "the panel has it";
    const auto window = startClock({20, 300, 300, 300});
    desktop().windows().activate(window);
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_TRUE(waitUntil([&] { return desktop().keyboard().grab(); }));
    desktop().keyboard().ungrab();
}

INSTANTIATE_TEST_SUITE_P(On, MenuFocusTest, testedWindowManagers(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
