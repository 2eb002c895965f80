// The application: owns the engine and the services that the whole program shares, starts the input
// services once windows can be moved, and carries out what a pressed shortcut asks for.
#pragma once

#include "arrangements/arrangement_store.h"
#include "base/notification_center.h"
#include "base/token.h"
#include "engine/engine_services.h"
#include "engine/window_engine.h"
#include "platform/hot_key_center.h"
#include "platform/run_loop.h"
#include "shortcuts/hotkeys.h"
#include "shortcuts/key_bindings.h"

#include <string>

namespace tessellon {

/// The ports that the application is built on. It owns none of them.
struct AppServices {
    EngineServices engine;
    HotKeyCenter& hotKeyCenter;
    RunLoop& runLoop;
};

class AppDelegate {
  public:
    /// Creates the engine, which loads the restore memory. Nothing else happens before
    /// applicationDidFinishLaunching.
    explicit AppDelegate(const AppServices& services);
    AppDelegate(const AppDelegate&) = delete;
    AppDelegate& operator=(const AppDelegate&) = delete;

    /// To be called once, when the run loop is about to run.
    void applicationDidFinishLaunching();

    /// True once the input services have been started; they stay so until the program ends.
    bool started() const { return started_; }

    WindowEngine& engine() { return engine_; }
    Hotkeys& hotkeys() { return hotkeys_; }
    KeyBindings& keyBindings() { return keyBindings_; }
    ArrangementStore& arrangements() { return arrangements_; }
    NotificationCenter& notifications() { return notifications_; }

  private:
    void startServices();
    void healthCheck();
    void reportTakenShortcuts();
    void perform(const HotkeyTarget& target);

    AppServices services_;
    NotificationCenter notifications_;
    WindowEngine engine_;
    ArrangementStore arrangements_;
    KeyBindings keyBindings_;
    Hotkeys hotkeys_;
    bool started_ = false;
    std::string reportedTaken_;
    Token healthTimer_;
    Token settingsReloaded_;
    Token hotkeysChanged_;
};

}  // namespace tessellon
