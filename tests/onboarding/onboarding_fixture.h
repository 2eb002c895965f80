// The welcome tour over a desktop in memory.
#pragma once

#include "app/notification_names.h"
#include "app/preferences.h"
#include "arrangements/arrangement_store.h"
#include "onboarding/onboarding_model.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_accessibility.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_hot_key_center.h"
#include "platform/memory/memory_login_item.h"
#include "platform/memory/memory_user_defaults.h"
#include "shortcuts/default_shortcuts.h"

#include <memory>
#include <string>

namespace tessellon {

class Onboarding {
  public:
    Onboarding() { registerPreferenceDefaults(defaults); }

    OnboardingModel& start(int step = 0) {
        model = std::make_unique<OnboardingModel>(
            OnboardingServices{desktop.accessibility(), defaults, loginItem, bindings, hotkeys,
                               notifications, loop},
            step, [this] { ++finished; });
        return *model;
    }

    /// The shortcuts work from now on.
    void registerHotkeys() {
        hotkeys.setHandler([](const HotkeyTarget& /*target*/) {});
    }

    /// Another program has the built-in shortcut of the action.
    void hold(SnapAction action) {
        const auto combo = defaultCombo(HotkeyTarget::snap(action));
        center.holdByOthers(static_cast<std::uint32_t>(combo->keyCode),
                            hotKeyModifiers(combo->mods));
        hotkeys.registerHotkeys();
    }

    void happens(const NotificationCenter::Object& event) {
        notifications.post(notification::tourEvent, event);
    }
    void happens(Tour::Event event) { happens(std::string(Tour::rawValue(event))); }

    void passTime() { loop.advance(Seconds{1}); }

    MemoryDesktop desktop;
    MemoryUserDefaults defaults;
    MemoryLoginItem loginItem;
    NotificationCenter notifications;
    ManualRunLoop loop;
    ArrangementStore arrangements{defaults, notifications};
    KeyBindings bindings{defaults, arrangements};
    MemoryHotKeyCenter center;
    Hotkeys hotkeys{center, bindings, notifications};
    int finished = 0;
    std::unique_ptr<OnboardingModel> model;
};

}  // namespace tessellon
