// Bindings and hot keys over a desktop in memory, as the tests of this folder use them.
#pragma once

#include "app/notification_names.h"
#include "app/preferences.h"
#include "arrangements/arrangement_store.h"
#include "fakes/stored_text.h"
#include "platform/memory/memory_hot_key_center.h"
#include "platform/memory/memory_user_defaults.h"
#include "shortcuts/hotkeys.h"
#include "shortcuts/key_bindings.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace tessellon {

class ShortcutsTest : public testing::Test {
  protected:
    ShortcutsTest() { registerPreferenceDefaults(defaults); }

    static constexpr std::uint64_t controlOption = modifier_flag::control | modifier_flag::option;
    static constexpr std::uint64_t controlOptionCommand = controlOption | modifier_flag::command;
    static constexpr std::uint64_t controlCommand = modifier_flag::control | modifier_flag::command;

    /// ⌃⌥ as hot keys are registered with it.
    static constexpr std::uint32_t controlOptionKeys =
        hot_key_modifier::control | hot_key_modifier::option;

    static HotkeyTarget snap(SnapAction action) { return HotkeyTarget::snap(action); }

    /// Stores an arrangement and gives its target.
    HotkeyTarget addArrangementNamed(std::string name, std::optional<KeyCombo> combo = {}) {
        Arrangement arrangement{Uuid::random(), std::move(name), {}, std::move(combo)};
        addArrangement(store, arrangement);
        return HotkeyTarget::arrangement(arrangement.id);
    }

    void storeKeymap(std::string_view json) {
        defaults.setObject(preference::keymap, dataOf(json));
    }

    std::string storedKeymap() const { return storedText(defaults, preference::keymap); }

    MemoryUserDefaults defaults;
    NotificationCenter notifications;
    ArrangementStore store{defaults, notifications};
    KeyBindings bindings{defaults, store};
    MemoryHotKeyCenter center;
    Hotkeys hotkeys{center, bindings, notifications};
};

}  // namespace tessellon
