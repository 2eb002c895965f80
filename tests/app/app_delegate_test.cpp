// The whole application on the desktop in memory.
#include "app/app_delegate.h"

#include "app/notification_names.h"
#include "app/preferences.h"
#include "drag/fake_drag_views.h"
#include "fakes/fake_window.h"
#include "launcher/fake_launcher_views.h"
#include "menu/fake_menu_views.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_application_directory.h"
#include "platform/memory/memory_beep.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_event_monitors.h"
#include "platform/memory/memory_event_taps.h"
#include "platform/memory/memory_hot_key_center.h"
#include "platform/memory/memory_keyboard_focus.h"
#include "platform/memory/memory_login_item.h"
#include "platform/memory/memory_own_application.h"
#include "platform/memory/memory_power_events.h"
#include "platform/memory/memory_status_item.h"
#include "platform/memory/memory_updater.h"
#include "platform/memory/memory_user_defaults.h"

#include <any>
#include <memory>
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
                directory_,
                loginItem_,
                updater_,
                application_,
                beep_,
                loop_,
                "1.2.3"};
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
                [this](const SettingsServices&, SettingsPage page) {
                    pages_.push_back(page);
                    settings_ = std::make_shared<FakeWindowState>();
                    return std::make_unique<FakeWindow>(settings_);
                },
                [this](OnboardingModel& model) {
                    tour_ = &model;
                    tours_.push_back(std::make_shared<FakeWindowState>());
                    auto window = std::make_unique<FakeWindow>(tours_.back());
                    tourWindow_ = window.get();
                    return window;
                }};
    }

    /// Starts the program, after the end of one that runs.
    AppDelegate& start() {
        end();
        app_ = std::make_unique<AppDelegate>(services(), views());
        app_->applicationDidFinishLaunching();
        return *app_;
    }
    void end() { app_.reset(); }

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
    MemoryApplicationDirectory directory_;
    MemoryLoginItem loginItem_;
    MemoryUpdater updater_;
    MemoryOwnApplication application_;
    MemoryBeep beep_;
    ManualRunLoop loop_;
    FakeDragViews* dragViews_ = nullptr;
    FakeLauncherViews* launcherViews_ = nullptr;
    FakeMenuViews* menuViews_ = nullptr;
    /// The page that each settings window was made with, and what became of the last one.
    std::vector<SettingsPage> pages_;
    std::shared_ptr<FakeWindowState> settings_;
    std::vector<std::shared_ptr<FakeWindowState>> tours_;
    FakeWindow* tourWindow_ = nullptr;
    OnboardingModel* tour_ = nullptr;
    Element window_;
    std::unique_ptr<AppDelegate> app_;
};

TEST_F(AppDelegateTest, ObeysShortcutsAndTellsTheTour) {
    auto& app = start();
    std::vector<std::string> events;
    const auto observer = app.notifications().observe(
        notification::tourEvent,
        [&](const std::any& object) { events.push_back(std::any_cast<std::string>(object)); });
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
    auto& app = start();
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
    auto& app = start();
    hotKeys_.press(keyT, control | option | command);
    EXPECT_EQ(frame(), (Rect{8, 33, 1904, 1039}));

    const KeyCombo combo{40, modifier_flag::control | modifier_flag::command, "K"};
    const Arrangement arrangement{
        Uuid::random(), "Desk", {{"com.editor", "", 0, {0.5, 0, 0.5, 1}}}, combo};
    addArrangement(app.arrangements(), arrangement);
    hotKeys_.press(40, control | command);
    EXPECT_EQ(frame(), (Rect{960, 33, 952, 1039}));

    removeArrangement(app.arrangements(), arrangement.id);
    EXPECT_FALSE(hotKeys_.press(40, control | command)) << "the combination is free again";
    defaults_.setBool(preference::tilingEnabled, false);
    EXPECT_FALSE(hotKeys_.press(keyT, control | option | command));
    defaults_.setBool(preference::tilingEnabled, true);
    EXPECT_TRUE(hotKeys_.press(keyT, control | option | command));
}

TEST_F(AppDelegateTest, RestoresAlsoAfterARestart) {
    start();
    hotKeys_.press(keyLeft, control | option);
    end();
    EXPECT_EQ(hotKeys_.registeredCount(), 0U);
    start();
    hotKeys_.press(keyBackspace, control | option);
    EXPECT_EQ(frame(), before);
}

TEST_F(AppDelegateTest, BuildsNothingOfTheInterfaceBeforeItIsNeeded) {
    start();
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
    start();
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
    auto& app = start();
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
    auto& app = start();
    EXPECT_EQ(updater_.starts(), 1);
    EXPECT_TRUE(menuViews_->states.empty()) << "built when it is first opened";
    item_.press();
    ASSERT_EQ(menuViews_->states.size(), 1U);
    EXPECT_TRUE(menuViews_->states.back()->key);
    desktop_.eventMonitors().type({virtual_key::comma, modifier_flag::command, false, "", ","});
    EXPECT_FALSE(menuViews_->states.back()->exists);
    ASSERT_TRUE(settings_);
    EXPECT_EQ(settings_->timesInFront, 1);
    app.showMenu();
    desktop_.eventMonitors().type({virtual_key::q, modifier_flag::command, false, "", "q"});
    EXPECT_EQ(application_.terminations(), 1);
}

TEST_F(AppDelegateTest, KeepsOneSettingsWindow) {
    auto& app = start();
    std::vector<SettingsPage> selected;
    const auto observer = app.notifications().observe(
        notification::settingsSelect,
        [&](const std::any& object) { selected.push_back(std::any_cast<SettingsPage>(object)); });
    EXPECT_FALSE(settings_);
    app.openSettings();
    app.openSettings(SettingsPage::rules);
    app.openSettings();
    EXPECT_EQ(pages_, std::vector{SettingsPage::general});
    EXPECT_EQ(selected, std::vector{SettingsPage::rules});
    EXPECT_EQ(settings_->timesInFront, 3);
}

TEST_F(AppDelegateTest, OpensTheSettingsAtAPage) {
    auto& app = start();
    app.openSettings(SettingsPage::about);
    EXPECT_EQ(pages_, std::vector{SettingsPage::about});
}

TEST_F(AppDelegateTest, ShowsTheTourUntilItIsFinished) {
    start();
    ASSERT_EQ(tours_.size(), 1U);
    EXPECT_TRUE(tours_[0]->visible);
    EXPECT_EQ(tour_->step(), 0);
    tourWindow_->close();
    loop_.advance(Seconds{0});
    EXPECT_FALSE(tours_[0]->exists);
    EXPECT_FALSE(defaults_.boolForKey(preference::onboarded));

    start();
    ASSERT_EQ(tours_.size(), 2U) << "it was closed, not finished";
    tour_->finish();
    EXPECT_TRUE(defaults_.boolForKey(preference::onboarded));
    loop_.advance(Seconds{0});
    EXPECT_FALSE(tours_[1]->exists);

    auto& app = start();
    loop_.advance(Seconds{10});
    ASSERT_EQ(tours_.size(), 2U);
    app.notifications().post(notification::showTour);
    ASSERT_EQ(tours_.size(), 3U);
    EXPECT_EQ(tour_->step(), 0);
    app.notifications().post(notification::showTour);
    ASSERT_EQ(tours_.size(), 4U);
    EXPECT_FALSE(tours_[2]->exists);
    EXPECT_TRUE(tours_[3]->visible);
    // One that is closed and asked for again in the same moment is there.
    tourWindow_->close();
    app.notifications().post(notification::showTour);
    loop_.advance(Seconds{0});
    EXPECT_TRUE(tours_[4]->visible);
}

TEST_F(AppDelegateTest, AsksForThePermissionOnlyWhenItStaysAway) {
    defaults_.setBool(preference::onboarded, true);
    desktop_.setTrusted(false);
    start();
    EXPECT_TRUE(tours_.empty());
    desktop_.setTrusted(true);
    loop_.advance(Seconds{10});
    EXPECT_TRUE(tours_.empty()) << "the window manager was only late";

    end();
    desktop_.setTrusted(false);
    start();
    loop_.advance(Seconds{10});
    ASSERT_EQ(tours_.size(), 1U);
    EXPECT_EQ(tour_->step(), OnboardingModel::permissionStep);
}

TEST_F(AppDelegateTest, ShortcutsRestWhileNewOnesAreRecorded) {
    auto& app = start();
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
