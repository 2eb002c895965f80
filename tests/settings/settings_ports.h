// Everything that the pages of the settings read, change and set off beside the engine, in memory.
#pragma once

#include "app/notification_names.h"
#include "arrangements/arrangement_store.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_application_directory.h"
#include "platform/memory/memory_beep.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_event_monitors.h"
#include "platform/memory/memory_hot_key_center.h"
#include "platform/memory/memory_keyboard_focus.h"
#include "platform/memory/memory_login_item.h"
#include "platform/memory/memory_own_application.h"
#include "platform/memory/memory_updater.h"
#include "settings/settings_services.h"
#include "shortcuts/hotkeys.h"
#include "shortcuts/key_bindings.h"
#include "shortcuts/recorder.h"

#include <functional>
#include <memory>
#include <utility>

namespace tessellon {

struct SettingsPorts {
    /// Both must outlive this object.
    SettingsPorts(MemoryDesktop& desktop, UserDefaults& userDefaults)
        : defaults(userDefaults), monitors(desktop.eventMonitors()) {
        hotkeys.setHandler([](const HotkeyTarget&) {});
    }

    SettingsServices services(WindowEngine& engine,
                              std::function<std::unique_ptr<DragViews>()> makeDragViews) {
        return {.engine = engine,
                .defaults = defaults,
                .keyBindings = bindings,
                .hotkeys = hotkeys,
                .recorder = recorder,
                .arrangements = store,
                .directory = directory,
                .loginItem = loginItem,
                .updater = updater,
                .notifications = notifications,
                .runLoop = loop,
                .makeDragViews = std::move(makeDragViews),
                .version = "1.2.3"};
    }

    UserDefaults& defaults;
    EventMonitors& monitors;
    NotificationCenter notifications;
    ArrangementStore store{defaults, notifications};
    KeyBindings bindings{defaults, store};
    MemoryHotKeyCenter hotKeyCenter;
    Hotkeys hotkeys{hotKeyCenter, bindings, notifications};
    MemoryKeyboardFocus keyboard;
    MemoryOwnApplication application;
    MemoryBeep beep;
    Recorder recorder{{bindings, hotkeys, monitors, keyboard, application, beep, notifications}};
    MemoryApplicationDirectory directory;
    MemoryLoginItem loginItem;
    MemoryUpdater updater;
    ManualRunLoop loop;
};

}  // namespace tessellon
