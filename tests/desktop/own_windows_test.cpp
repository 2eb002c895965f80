// The program's own windows under real window managers: the settings, which come from the panel,
// and the welcome tour, which comes with the first start.
#include "menu_fixture.h"

#include <cstdlib>
#include <optional>
#include <string>
#include <variant>

namespace tessellon::desktop {
namespace {

constexpr Position pointerHome{1600, 40};
constexpr std::string_view settingsTitle = "Tessellon Settings";
constexpr std::string_view tourTitle = "Welcome to Tessellon";

class OwnWindowsTest : public MenuTesting<WindowManagerTest> {
  protected:
    std::optional<xcb_window_t> windowTitled(std::string_view title) {
        return desktop().windows().waitForTitled(program().process().pid(), title);
    }
    bool waitUntilActive(xcb_window_t window) {
        return waitUntil([&] { return desktop().windows().active() == window; });
    }
    bool waitUntilGone(xcb_window_t window) {
        return waitUntil([&] { return !desktop().windows().isShown(window); });
    }
    /// Its size without what the window manager puts around it, and how far its middle is from that
    /// of the area between the screen's edges and the bar at its top.
    void expectInTheMiddle(xcb_window_t window, int width, int height) {
        const auto frame = desktop().windows().visibleFrame(window).value_or(Frame{});
        EXPECT_GE(frame.width, width);
        EXPECT_LE(frame.width, width + 20);
        EXPECT_GE(frame.height, height);
        EXPECT_LE(frame.height, height + 50);
        const int middleX = desktop().x().width() / 2;
        const int middleY = (dockHeight + desktop().x().height()) / 2;
        EXPECT_LE(std::abs(frame.x + frame.width / 2 - middleX), 15);
        EXPECT_LE(std::abs(frame.y + frame.height / 2 - middleY), 25);
    }
    bool welcomed() {
        const auto settings = program().settings().value_or(StoredValues{});
        const auto found = settings.find("onboarded");
        return found != settings.end() && std::get<bool>(found->second);
    }
};

TEST_P(OwnWindowsTest, theSettingsComeToTheFrontFromThePanel) {
    useProgram();
    const auto clock = startClock({200, 200, 500, 400});
    openedAt(pointerHome);
    desktop().keyboard().combination({Key::leftSuper}, Key::comma);
    EXPECT_TRUE(waitUntilClosed());
    auto settings = windowTitled(settingsTitle);
    ASSERT_TRUE(settings);
    EXPECT_TRUE(waitUntilActive(*settings)) << "opened by keys";
    // It may be active before the program, which asks for that too, has seen it.
    program().waitUntilIdle();
    expectInTheMiddle(*settings, 900, 720);

    // Behind another window, minimized, and closed, it comes back as the window it was.
    const auto comesBack = [&](const std::string& from) {
        click(openedAt(pointerHome).settings());
        EXPECT_TRUE(waitUntilClosed());
        // One that was closed may come back as another window of the display's.
        settings = windowTitled(settingsTitle);
        ASSERT_TRUE(settings) << from;
        EXPECT_TRUE(waitUntilActive(*settings)) << from;
        program().waitUntilIdle();
    };
    desktop().windows().activate(clock);
    comesBack("behind");
    desktop().windows().minimize(*settings);
    comesBack("minimized");
    desktop().windows().close(*settings);
    EXPECT_TRUE(waitUntilGone(*settings));
    comesBack("closed");
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilGone(*settings));
    comesBack("closed by Escape");

    // No window of our own is ever snapped.
    const auto before = desktop().windows().visibleFrame(*settings);
    EXPECT_EQ(afterPress(*settings, Held::controlAlt, Key::left), before);
}

TEST_P(OwnWindowsTest, theTourComesUntilItIsFinished) {
    useDesktop();
    program().forgetSettings();
    program().start();
    const auto first = windowTitled(tourTitle);
    ASSERT_TRUE(first);
    EXPECT_TRUE(waitUntilActive(*first));
    expectInTheMiddle(*first, 640, 700);
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilGone(*first));
    program().waitUntilIdle();
    EXPECT_FALSE(welcomed());
    EXPECT_EQ(program().stop(), (ProcessEnd{.exitCode = 0, .signal = std::nullopt}));

    program().start();
    const auto second = windowTitled(tourTitle);
    ASSERT_TRUE(second);
    EXPECT_TRUE(waitUntilActive(*second));
    // By Return alone, through all four steps.
    for (int step = 0; step < 4; ++step) {
        program().waitUntilIdle();
        desktop().keyboard().tap(Key::enter);
    }
    EXPECT_TRUE(waitUntilGone(*second));
    EXPECT_TRUE(waitUntil([this] { return welcomed(); }));
    EXPECT_EQ(program().stop(), (ProcessEnd{.exitCode = 0, .signal = std::nullopt}));

    program().start();
    for (const auto window : desktop().windows().managed()) {
        EXPECT_NE(desktop().windows().title(window), tourTitle);
    }
}

INSTANTIATE_TEST_SUITE_P(On, OwnWindowsTest, testedWindowManagers(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
