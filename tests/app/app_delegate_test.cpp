// The whole application on the desktop in memory.
#include "app/app_delegate.h"

#include "app/notification_names.h"
#include "app/preferences.h"
#include "drag/fake_drag_views.h"
#include "launcher/fake_launcher_views.h"
#include "menu/fake_menu_views.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_beep.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_event_monitors.h"
#include "platform/memory/memory_event_taps.h"
#include "platform/memory/memory_hot_key_center.h"
#include "platform/memory/memory_keyboard_focus.h"
#include "platform/memory/memory_own_application.h"
#include "platform/memory/memory_power_events.h"
#include "platform/memory/memory_status_item.h"
#include "platform/memory/memory_updater.h"
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
                taps_,
                focus_,
                power_,
                item_,
                updater_,
                application_,
                beep_,
                loop_};
    }
    AppViews views() {
        return {[this](const KeyBindings&) {
                    auto made = std::make_unique<FakeDragViews>();
                    dragViews_ = made.get();
                    return made;
                },
                [this](const KeyBindings&) {
                    auto made = std::make_unique<FakeLauncherViews>();
                    launcherViews_ = made.get();
                    return made;
                },
                [this](const KeyBindings&) {
                    auto made = std::make_unique<FakeMenuViews>();
                    menuViews_ = made.get();
                    return made;
                },
                [this] { ++settingsOpened_; }};
    }

    /// Drags the window to another place with command held.
    void drag() {
        auto& hands = desktop_.eventMonitors();
        desktop_.setPointer(Point{700, 800});
        hands.setPressedMouseButtons(1);
        hands.setModifierFlags(modifier_flag::command);
        hands.emit(MonitoredEvent::leftMouseDragged);
        desktop_.window(window_)->frame.x += 50;
        hands.emit(MonitoredEvent::leftMouseDragged);
    }
    bool pressChord() {
        return taps_.press({44, modifier_flag::command | modifier_flag::rightCommand, false});
    }

    Rect frame() { return desktop_.window(window_)->frame; }

    MemoryDesktop desktop_;
    MemoryUserDefaults defaults_;
    MemoryHotKeyCenter hotKeys_;
    MemoryEventTaps taps_;
    MemoryPowerEvents power_;
    MemoryKeyboardFocus focus_;
    MemoryStatusItem item_;
    MemoryUpdater updater_;
    MemoryOwnApplication application_;
    MemoryBeep beep_;
    ManualRunLoop loop_;
    FakeDragViews* dragViews_ = nullptr;
    FakeLauncherViews* launcherViews_ = nullptr;
    FakeMenuViews* menuViews_ = nullptr;
    int settingsOpened_ = 0;
    Element window_;
};

TEST_F(AppDelegateTest, ObeysShortcutsAndTellsTheTour) {
    AppDelegate app(services(), views());
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
    AppDelegate app(services(), views());
    app.applicationDidFinishLaunching();
    loop_.advance(Seconds{10});
    EXPECT_FALSE(app.started());
    EXPECT_EQ(hotKeys_.registeredCount(), 0U);

    desktop_.setTrusted(true);
    EXPECT_TRUE(app.started()) << "a window manager that comes is not waited for";
    EXPECT_EQ(hotKeys_.registeredCount(), 19U);

    desktop_.setTrusted(false);
    loop_.advance(Seconds{4});
    desktop_.setTrusted(true);
    loop_.advance(Seconds{4});
    EXPECT_EQ(hotKeys_.handlerCount(), 1U);
}

TEST_F(AppDelegateTest, TilesAndAppliesArrangements) {
    defaults_.setBool(preference::tilingEnabled, true);
    AppDelegate app(services(), views());
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
        AppDelegate first(services(), views());
        first.applicationDidFinishLaunching();
        hotKeys_.press(keyLeft, control | option);
    }
    EXPECT_EQ(hotKeys_.registeredCount(), 0U);
    AppDelegate second(services(), views());
    second.applicationDidFinishLaunching();
    hotKeys_.press(keyBackspace, control | option);
    EXPECT_EQ(frame(), before);
}

TEST_F(AppDelegateTest, BuildsNothingOfTheInterfaceBeforeItIsNeeded) {
    AppDelegate app(services(), views());
    app.applicationDidFinishLaunching();
    EXPECT_EQ(dragViews_->gridsMade, 0);
    EXPECT_EQ(launcherViews_, nullptr);
    drag();
    EXPECT_EQ(dragViews_->gridsMade, 1);
    EXPECT_TRUE(pressChord());
    ASSERT_NE(launcherViews_, nullptr);
    EXPECT_EQ(launcherViews_->states.size(), 1U);
}

TEST_F(AppDelegateTest, RepairsTheTapWithinTwoSeconds) {
    taps_.refuse(true);
    AppDelegate app(services(), views());
    app.applicationDidFinishLaunching();
    EXPECT_FALSE(pressChord());
    taps_.refuse(false);
    loop_.advance(Seconds{2});
    EXPECT_TRUE(pressChord());
    taps_.invalidateAll();
    loop_.advance(Seconds{2});
    EXPECT_EQ(taps_.tapCount(), 1U);
    EXPECT_TRUE(pressChord());
    taps_.disableAll(MemoryEventTaps::Notice::lost);
    power_.wake();
    EXPECT_TRUE(pressChord()) << "waking checks the health at once";
}

TEST_F(AppDelegateTest, ClearsTheScreenWhenTheDesktopBelowChanges) {
    AppDelegate app(services(), views());
    app.applicationDidFinishLaunching();
    const auto screenIsClear = [&] {
        return dragViews_->grids.empty() && !launcherViews_->states.back()->exists &&
               !menuViews_->states.back()->exists && !item_.isHighlighted();
    };
    const auto showAll = [&] {
        desktop_.eventMonitors().emit(MonitoredEvent::leftMouseUp);
        drag();
        pressChord();
        app.showMenu();
        EXPECT_FALSE(dragViews_->grids.empty());
        EXPECT_TRUE(launcherViews_->states.back()->exists);
        EXPECT_TRUE(menuViews_->states.back()->exists);
    };
    showAll();
    power_.wake();
    EXPECT_TRUE(screenIsClear());
    showAll();
    desktop_.setTrusted(true);
    EXPECT_TRUE(screenIsClear()) << "another window manager";
    showAll();
    desktop_.setScreens({{1, {0, 0, 1280, 720}, {0, 0, 1280, 695}, std::nullopt, "Screen"}});
    EXPECT_TRUE(screenIsClear());
    EXPECT_TRUE(desktop_.activations().empty());
    // The abandoned drag does not snap when the button goes up.
    const Rect where = frame();
    desktop_.eventMonitors().emit(MonitoredEvent::leftMouseUp);
    loop_.advance(Seconds{1});
    EXPECT_EQ(frame(), where);
}

TEST_F(AppDelegateTest, HasItsMenuWithOrWithoutAWindowManager) {
    desktop_.setTrusted(false);
    AppDelegate app(services(), views());
    app.applicationDidFinishLaunching();
    EXPECT_EQ(updater_.starts(), 1);
    EXPECT_TRUE(menuViews_->states.empty()) << "built when it is first opened";
    item_.press();
    ASSERT_EQ(menuViews_->states.size(), 1U);
    EXPECT_TRUE(menuViews_->states.back()->key);
    desktop_.eventMonitors().type({virtual_key::comma, modifier_flag::command, false, "", ","});
    EXPECT_FALSE(menuViews_->states.back()->exists);
    EXPECT_EQ(settingsOpened_, 1);
    app.showMenu();
    desktop_.eventMonitors().type({virtual_key::q, modifier_flag::command, false, "", "q"});
    EXPECT_EQ(application_.terminations(), 1);
}

TEST_F(AppDelegateTest, ShortcutsRestWhileNewOnesAreRecorded) {
    AppDelegate app(services(), views());
    app.applicationDidFinishLaunching();
    auto& recorder = app.recorder();
    recorder.toggle(HotkeyTarget::snap(SnapAction::center));
    EXPECT_FALSE(hotKeys_.press(keyLeft, control | option));
    desktop_.eventMonitors().type(
        {keyT, modifier_flag::control | modifier_flag::shift, false, "", "T"});
    EXPECT_FALSE(recorder.target());
    EXPECT_TRUE(hotKeys_.press(keyT, control | shift));
    EXPECT_TRUE(hotKeys_.press(keyLeft, control | option));
}

}  // namespace
}  // namespace tessellon
