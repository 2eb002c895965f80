// The application: owns the engine and what the whole program shares, starts the input services
// once windows can be moved, keeps them alive, carries out what a pressed shortcut asks for, and
// clears away what is on screen when the desktop below it changes.
#pragma once

#include "arrangements/arrangement_store.h"
#include "base/notification_center.h"
#include "base/token.h"
#include "drag/drag_snapper.h"
#include "drag/drag_views.h"
#include "engine/engine_services.h"
#include "engine/window_engine.h"
#include "launcher/launcher.h"
#include "launcher/right_command_slash.h"
#include "menu/status_menu.h"
#include "onboarding/onboarding_model.h"
#include "platform/application_directory.h"
#include "platform/beep.h"
#include "platform/event_tap.h"
#include "platform/hot_key_center.h"
#include "platform/keyboard_focus.h"
#include "platform/login_item.h"
#include "platform/own_application.h"
#include "platform/power_events.h"
#include "platform/run_loop.h"
#include "platform/status_item.h"
#include "platform/updater.h"
#include "platform/window.h"
#include "settings/settings_page.h"
#include "settings/settings_services.h"
#include "shortcuts/hotkeys.h"
#include "shortcuts/key_bindings.h"
#include "shortcuts/recorder.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace tessellon {

/// The ports that the application is built on. It owns none of them.
struct AppServices {
    EngineServices engine;
    HotKeyCenter& hotKeyCenter;
    EventTaps& eventTaps;
    KeyboardFocus& keyboardFocus;
    PowerEvents& powerEvents;
    StatusItem& statusItem;
    const ApplicationDirectory& directory;
    LoginItem& loginItem;
    Updater& updater;
    OwnApplication& application;
    Beep& beep;
    RunLoop& runLoop;
    /// The version that runs, such as "1.2.3".
    std::string version;
};

/// The makers of what the features show. They get the bindings, since panels name shortcuts. Those
/// of panels are called once each, when their feature starts; a panel itself is built when it is
/// first shown.
struct AppViews {
    std::function<std::unique_ptr<DragViews>(const KeyBindings&)> drag;
    std::function<std::unique_ptr<LauncherViews>(const KeyBindings&)> launcher;
    std::function<std::unique_ptr<MenuViews>(const KeyBindings&)> menu;
    /// A window, not shown yet, with the settings at a page; what the services name outlives it.
    std::function<std::unique_ptr<Window>(const SettingsServices&, SettingsPage)> settings;
    /// A window, not shown yet, with the welcome tour; the model outlives it.
    std::function<std::unique_ptr<Window>(OnboardingModel&)> onboarding;
};

class AppDelegate {
  public:
    /// Creates the engine, which loads the restore memory. Nothing else happens before
    /// applicationDidFinishLaunching.
    AppDelegate(const AppServices& services, AppViews views);
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    /// To be called once, when the run loop is about to run.
    void applicationDidFinishLaunching();

    /// Opens the status item's panel, wherever the request came from.
    void showMenu();

    /// Brings the settings window to the front, at the page if one is named; the window is made at
    /// the first call and kept.
    void openSettings(std::optional<SettingsPage> page = std::nullopt);

    /// Opens the welcome tour in a fresh window, in place of one that is open.
    void showOnboarding();

    /// True once the input services have been started; they stay so until the program ends.
    bool started() const { return started_; }

    WindowEngine& engine() { return engine_; }
    Hotkeys& hotkeys() { return hotkeys_; }
    KeyBindings& keyBindings() { return keyBindings_; }
    ArrangementStore& arrangements() { return arrangements_; }
    NotificationCenter& notifications() { return notifications_; }
    Recorder& recorder();

  private:
    /// A feature and what builds its panels.
    struct Drag {
        Drag(std::unique_ptr<DragViews> made, AppDelegate& app)
            : views(std::move(made)),
              snapper(app.engine_, *views, app.services_.runLoop, app.notifications_) {}
        std::unique_ptr<DragViews> views;
        DragSnapper snapper;
    };
    struct LauncherFeature {
        LauncherFeature(std::unique_ptr<LauncherViews> made, AppDelegate& app)
            : views(std::move(made)),
              launcher(app.engine_, *views, app.services_.beep, app.notifications_) {}
        std::unique_ptr<LauncherViews> views;
        Launcher launcher;
    };
    struct Menu {
        Menu(std::unique_ptr<MenuViews> made, AppDelegate& app);
        std::unique_ptr<MenuViews> views;
        StatusMenu menu;
    };

    struct Onboarding {
        explicit Onboarding(AppDelegate& app);
        OnboardingModel model;
        std::unique_ptr<Window> window;
        Token closed;
    };

    DragSnapper& drag();
    Launcher& launcher();
    RightCommandSlash& commandTap();
    SettingsServices settingsServices();
    void showOnboardingIfDue();
    void forgetOnboarding();
    void startServices();
    void healthCheck();
    void resetTransientUI();
    void reportTakenShortcuts();
    void perform(const HotkeyTarget& target);

    AppServices services_;
    AppViews views_;
    NotificationCenter notifications_;
    WindowEngine engine_;
    ArrangementStore arrangements_;
    KeyBindings keyBindings_;
    Hotkeys hotkeys_;
    std::unique_ptr<Menu> menu_;
    // Made at their first use.
    std::optional<Recorder> recorder_;
    std::unique_ptr<Drag> drag_;
    std::unique_ptr<LauncherFeature> launcher_;
    std::optional<RightCommandSlash> commandTap_;
    std::unique_ptr<Window> settingsWindow_;
    std::unique_ptr<Onboarding> onboardingWindow_;
    bool started_ = false;
    std::string reportedTaken_;
    Token healthTimer_;
    Token trustChanged_;
    Token woke_;
    Token displaysChanged_;
    Token settingsReloaded_;
    Token tilingSwitched_;
    Token arrangementsChanged_;
    Token hotkeysChanged_;
    Token tourWanted_;
    Token tourDue_;
    Token tourForgotten_;
};

}  // namespace tessellon
