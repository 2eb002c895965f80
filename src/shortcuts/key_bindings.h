// Which combination sets off which target: the built-in shortcuts, the user's changes to them, and
// the shortcuts of arrangements. Nothing is kept; every question reads what is stored.
#pragma once

#include "arrangements/arrangement_store.h"
#include "base/signal.h"
#include "platform/user_defaults.h"
#include "shortcuts/hotkey_target.h"
#include "shortcuts/key_combo.h"
#include "shortcuts/keymap_json.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

/// A target and the combination that sets it off.
struct KeyBinding {
    HotkeyTarget target;
    KeyCombo combo;
    bool operator==(const KeyBinding&) const = default;
};

class KeyBindings {
  public:
    /// Both must outlive the bindings.
    KeyBindings(UserDefaults& defaults, ArrangementStore& arrangements);

    /// Every target there is: the snap actions in order, tiling, the stored arrangements in order.
    /// Of two targets with the same combination the earlier one gets it.
    std::vector<HotkeyTarget> allTargets() const;

    /// Whether there is such a target; an arrangement's goes with the arrangement.
    bool exists(const HotkeyTarget& target) const;

    /// The target's name for the user.
    std::string title(const HotkeyTarget& target) const;

    /// The stored changes; empty when there are none or they cannot be read.
    Keymap loadKeymap() const;

    /// The combination that sets off the target now, if any.
    std::optional<KeyCombo> comboFor(const HotkeyTarget& target) const;

    /// Stores a target's combination, or that it has none. Other targets keep theirs, even the same
    /// one. A stored value that cannot be read is kept aside before it is replaced.
    void setCombo(const std::optional<KeyCombo>& combo, const HotkeyTarget& target);

    /// Gives the combination to `target`, takes it from every other target and has the hot keys
    /// registered anew. Returns the title of the target that lost it, the last one if several did.
    /// Changes nothing when there is no such target.
    std::optional<std::string> assignCombo(std::int64_t keyCode, std::uint64_t mods,
                                           std::string_view key, const HotkeyTarget& target);

    /// What is to be registered, in order: every target that has a combination, tiling only while
    /// it is switched on.
    std::vector<KeyBinding> bindings() const;

    /// Gives snap actions and tiling their built-in shortcuts back and has the hot keys registered
    /// anew. Arrangements keep theirs.
    void resetToDefaults();

    /// Binds every target whose built-in shortcut is held with ⌃⌥ or ⌃⌥⇧ to ⌃⌘ or ⌃⌘⇧ and the same
    /// key, for desktops that hold the former, and has the hot keys registered anew. Other targets
    /// keep theirs, even the same one; resetToDefaults undoes it.
    void useControlCommand();

    /// Whether every target has the combination that useControlCommand would give it.
    bool usesControlCommand() const;

    /// The combination of a snap action as one text, such as "⌃⌥←"; "" when it has none.
    std::string shortcutText(SnapAction action) const;

    /// Emitted at the end of assignCombo, resetToDefaults and useControlCommand; the hot keys are
    /// registered anew then.
    const Signal<>& rebound() const { return rebound_; }

    /// Emitted before resetToDefaults or useControlCommand changes anything; a recording in
    /// progress ends then.
    const Signal<>& willReset() const { return willReset_; }

    /// Emitted when somebody else has changed the stored settings; any target may be another.
    const Signal<>& reloaded() const { return defaults_.reloaded(); }

  private:
    /// The stored values that the answer to one question comes from.
    struct Stored {
        Keymap keymap;
        std::vector<Arrangement> arrangements;
    };

    Stored load() const;
    /// Only what tells about one target: a page of shortcuts asks for many.
    Stored loadFor(const HotkeyTarget& target) const;
    static std::vector<HotkeyTarget> allTargets(const Stored& stored);
    static bool exists(const HotkeyTarget& target, const Stored& stored);
    static std::string title(const HotkeyTarget& target, const Stored& stored);
    static std::optional<KeyCombo> comboFor(const HotkeyTarget& target, const Stored& stored);
    std::optional<Keymap> readKeymap() const;
    /// Keeps a stored keymap that cannot be read aside; false when that fails.
    bool mayReplaceKeymap();
    void replaceKeymap(const Keymap& keymap);

    UserDefaults& defaults_;
    ArrangementStore& arrangements_;
    Signal<> rebound_;
    Signal<> willReset_;
};

}  // namespace tessellon
