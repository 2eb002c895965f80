// The whole application on the desktop in memory.
#include "app/app_delegate.h"

#include "app/notification_names.h"
#include "app/preferences.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_event_monitors.h"
#include "platform/memory/memory_hot_key_center.h"
#include "platform/memory/memory_user_defaults.h"

#include <any>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

using namespace hot_key_modifier;

constexpr std::uint32_t keyLeft = 123;
constexpr std::uint32_t keyBackspace = 51;
constexpr std::uint32_t keyT = 17;
constexpr Rect before{300, 200, 900, 640};
constexpr Rect leftHalf{8, 33, 948, 1039};

class AppDelegateTest : public testing::Test {
  protected:
    AppDelegateTest() {
        desktop_.launch({100, "com.editor", "Editor", ActivationPolicy::regular, false});
        MemoryWindow window;
        window.pid = 100;
        window.frame = before;
        window_ = desktop_.open(window);
        desktop_.focus(window_);
    }

    AppServices services() {
        return {{desktop_.accessibility(), desktop_.applications(), desktop_.displays(),
                 desktop_.windowList(), desktop_.eventMonitors(), defaults_},
                hotKeys_,
                loop_};
    }

    Rect frame() { return desktop_.window(window_)->frame; }

    MemoryDesktop desktop_;
    MemoryUserDefaults defaults_;
    MemoryHotKeyCenter hotKeys_;
    ManualRunLoop loop_;
    Element window_;
};

TEST_F(AppDelegateTest, ObeysShortcutsAndTellsTheTour) {
    AppDelegate app(services());
    std::vector<std::string> events;
    const auto observer = app.notifications().observe(
        notification::tourEvent,
        [&](const std::any& object) { events.push_back(std::any_cast<std::string>(object)); });
    app.applicationDidFinishLaunching();
    ASSERT_TRUE(app.started());
    EXPECT_EQ(hotKeys_.registeredCount(), 19U);
    hotKeys_.press(keyLeft, control | option);
    EXPECT_EQ(frame(), leftHalf);
    hotKeys_.press(keyBackspace, control | option);
    EXPECT_EQ(frame(), before);
    EXPECT_EQ(events, (std::vector<std::string>{"shortcut", "shortcut"}));
}

TEST_F(AppDelegateTest, StartsItsServicesOnceWhenWindowsCanBeMoved) {
    desktop_.setTrusted(false);
    AppDelegate app(services());
    app.applicationDidFinishLaunching();
    loop_.advance(Seconds{10});
    EXPECT_FALSE(app.started());
    EXPECT_EQ(hotKeys_.registeredCount(), 0U);

    desktop_.setTrusted(true);
    loop_.advance(Seconds{2});
    EXPECT_TRUE(app.started());
    EXPECT_EQ(hotKeys_.registeredCount(), 19U);

    desktop_.setTrusted(false);
    loop_.advance(Seconds{4});
    desktop_.setTrusted(true);
    loop_.advance(Seconds{4});
    EXPECT_EQ(hotKeys_.handlerCount(), 1U);
}

TEST_F(AppDelegateTest, TilesAndAppliesArrangements) {
    defaults_.setBool(preference::tilingEnabled, true);
    AppDelegate app(services());
    app.applicationDidFinishLaunching();
    hotKeys_.press(keyT, control | option | command);
    EXPECT_EQ(frame(), (Rect{8, 33, 1904, 1039}));

    const KeyCombo combo{40, modifier_flag::control | modifier_flag::command, "K"};
    const Arrangement arrangement{
        Uuid::random(), "Desk", {{"com.editor", "", 0, {0.5, 0, 0.5, 1}}}, combo};
    addArrangement(app.arrangements(), arrangement);
    app.hotkeys().registerHotkeys();
    hotKeys_.press(40, control | command);
    EXPECT_EQ(frame(), (Rect{960, 33, 952, 1039}));

    // Gone from the list while its hot key is still there: nothing happens.
    removeArrangement(app.arrangements(), arrangement.id);
    hotKeys_.press(keyLeft, control | option);
    hotKeys_.press(40, control | command);
    EXPECT_EQ(frame(), leftHalf);
}

TEST_F(AppDelegateTest, RestoresAlsoAfterARestart) {
    {
        AppDelegate first(services());
        first.applicationDidFinishLaunching();
        hotKeys_.press(keyLeft, control | option);
    }
    EXPECT_EQ(hotKeys_.registeredCount(), 0U);
    AppDelegate second(services());
    second.applicationDidFinishLaunching();
    hotKeys_.press(keyBackspace, control | option);
    EXPECT_EQ(frame(), before);
}

}  // namespace
}  // namespace tessellon
