// Everything that the pages of the settings read, change and set off, on a desktop in memory.
#pragma once

#include "app/notification_names.h"
#include "arrangements/arrangement_store.h"
#include "drag/fake_drag_views.h"
#include "engine/engine_fixture.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_application_directory.h"
#include "platform/memory/memory_beep.h"
#include "platform/memory/memory_hot_key_center.h"
#include "platform/memory/memory_keyboard_focus.h"
#include "platform/memory/memory_login_item.h"
#include "platform/memory/memory_own_application.h"
#include "platform/memory/memory_updater.h"
#include "settings/settings_services.h"
#include "shortcuts/hotkeys.h"
#include "shortcuts/key_bindings.h"
#include "shortcuts/recorder.h"

#include <memory>

namespace tessellon {

class SettingsTest : public EngineTest {
  protected:
    SettingsTest() {
        hotkeys.setHandler([](const HotkeyTarget&) {});
        application.setKeyWindowFrame(Rect{100, 100, 900, 720});
    }

    SettingsServices settings() {
        return {.engine = engine(),
                .defaults = defaults_,
                .keyBindings = bindings,
                .hotkeys = hotkeys,
                .recorder = recorder,
                .arrangements = store,
                .directory = directory,
                .loginItem = loginItem,
                .updater = updater,
                .notifications = notifications,
                .runLoop = loop,
                .makeDragViews =
                    [this] {
                        auto made = std::make_unique<FakeDragViews>();
                        dragViews = made.get();
                        return made;
                    },
                .version = "1.2.3"};
    }

    NotificationCenter notifications;
    ArrangementStore store{defaults_, notifications};
    KeyBindings bindings{defaults_, store};
    MemoryHotKeyCenter hotKeyCenter;
    Hotkeys hotkeys{hotKeyCenter, bindings, notifications};
    MemoryKeyboardFocus keyboard;
    MemoryOwnApplication application;
    MemoryBeep beep;
    Recorder recorder{
        {bindings, hotkeys, desktop_.eventMonitors(), keyboard, application, beep, notifications}};
    MemoryApplicationDirectory directory;
    MemoryLoginItem loginItem;
    MemoryUpdater updater;
    ManualRunLoop loop;
    /// Those made last; they belong to whoever had them made.
    FakeDragViews* dragViews = nullptr;
};

}  // namespace tessellon
