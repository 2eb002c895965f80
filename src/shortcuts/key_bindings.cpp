#include "shortcuts/key_bindings.h"

#include "app/preferences.h"
#include "engine/snap_action_names.h"
#include "shortcuts/default_shortcuts.h"
#include "shortcuts/key_labels.h"

#include <algorithm>
#include <utility>

namespace tessellon {
namespace {

/// What is stored for a target whose shortcut the user took away.
const KeyCombo clearedCombo{-1, 0, ""};

}  // namespace

KeyBindings::KeyBindings(UserDefaults& defaults, ArrangementStore& arrangements)
    : defaults_(defaults), arrangements_(arrangements) {}

std::vector<HotkeyTarget> KeyBindings::allTargets() const {
    return allTargets(load());
}

bool KeyBindings::exists(const HotkeyTarget& target) const {
    return exists(target, loadFor(target));
}

std::string KeyBindings::title(const HotkeyTarget& target) const {
    return title(target, loadFor(target));
}

Keymap KeyBindings::loadKeymap() const {
    return readKeymap().value_or(Keymap{});
}

std::optional<KeyCombo> KeyBindings::comboFor(const HotkeyTarget& target) const {
    return comboFor(target, loadFor(target));
}

void KeyBindings::setCombo(const std::optional<KeyCombo>& combo, const HotkeyTarget& target) {
    if (const auto* arrangement = std::get_if<HotkeyTarget::Arrangement>(&target.kind)) {
        setArrangementCombo(arrangements_, arrangement->id, combo);
        return;
    }
    auto keymap = loadKeymap();
    const auto builtIn = defaultCombo(target);
    if (combo && builtIn && sameShortcut(*combo, *builtIn)) {
        keymap.erase(target.targetID());
    } else {
        keymap.insert_or_assign(target.targetID(), combo.value_or(clearedCombo));
    }
    replaceKeymap(keymap);
}

std::optional<std::string> KeyBindings::assignCombo(std::int64_t keyCode, std::uint64_t mods,
                                                    std::string_view key,
                                                    const HotkeyTarget& target) {
    const KeyCombo combo{keyCode, mods & modifier_flag::all, std::string(key)};
    std::optional<std::string> movedFrom;
    const auto stored = load();
    if (!exists(target, stored)) {
        return std::nullopt;
    }
    for (const auto& other : allTargets(stored)) {
        if (other == target) {
            continue;
        }
        const auto taken = comboFor(other, stored);
        if (taken && sameShortcut(*taken, combo)) {
            setCombo(std::nullopt, other);
            movedFrom = title(other, stored);
        }
    }
    setCombo(combo, target);
    rebound_.emit();
    return movedFrom;
}

std::vector<KeyBinding> KeyBindings::bindings() const {
    const auto stored = load();
    const bool tiles = defaults_.boolForKey(preference::tilingEnabled);
    std::vector<KeyBinding> bindings;
    for (const auto& target : allTargets(stored)) {
        if (target == HotkeyTarget::tile() && !tiles) {
            continue;
        }
        if (auto combo = comboFor(target, stored)) {
            bindings.push_back({target, *std::move(combo)});
        }
    }
    return bindings;
}

void KeyBindings::resetToDefaults() {
    willReset_.emit();
    if (mayReplaceKeymap()) {
        defaults_.removeObject(preference::keymap);
    }
    rebound_.emit();
}

void KeyBindings::useControlCommand() {
    willReset_.emit();
    auto keymap = loadKeymap();
    for (const auto action : allSnapActions) {
        const auto target = HotkeyTarget::snap(action);
        if (auto combo = controlCommandCombo(target)) {
            keymap.insert_or_assign(target.targetID(), *std::move(combo));
        }
    }
    replaceKeymap(keymap);
    rebound_.emit();
}

bool KeyBindings::usesControlCommand() const {
    const Stored stored{loadKeymap(), {}};
    return std::all_of(allSnapActions.begin(), allSnapActions.end(), [&stored](SnapAction action) {
        const auto target = HotkeyTarget::snap(action);
        const auto wanted = controlCommandCombo(target);
        const auto current = comboFor(target, stored);
        return !wanted || (current && sameShortcut(*current, *wanted));
    });
}

std::string KeyBindings::shortcutText(SnapAction action) const {
    const auto combo = comboFor(HotkeyTarget::snap(action));
    return combo ? displayText(*combo) : std::string();
}

KeyBindings::Stored KeyBindings::load() const {
    return {loadKeymap(), arrangements_.load()};
}

KeyBindings::Stored KeyBindings::loadFor(const HotkeyTarget& target) const {
    if (std::holds_alternative<HotkeyTarget::Arrangement>(target.kind)) {
        return {{}, arrangements_.load()};
    }
    return {loadKeymap(), {}};
}

std::vector<HotkeyTarget> KeyBindings::allTargets(const Stored& stored) {
    std::vector<HotkeyTarget> targets;
    targets.reserve(allSnapActions.size() + 1 + stored.arrangements.size());
    for (const auto action : allSnapActions) {
        targets.push_back(HotkeyTarget::snap(action));
    }
    targets.push_back(HotkeyTarget::tile());
    for (const auto& arrangement : stored.arrangements) {
        targets.push_back(HotkeyTarget::arrangement(arrangement.id));
    }
    return targets;
}

bool KeyBindings::exists(const HotkeyTarget& target, const Stored& stored) {
    const auto* const arrangement = std::get_if<HotkeyTarget::Arrangement>(&target.kind);
    return arrangement == nullptr ||
           findArrangement(stored.arrangements, arrangement->id) != nullptr;
}

std::string KeyBindings::title(const HotkeyTarget& target, const Stored& stored) {
    if (const auto* snap = std::get_if<HotkeyTarget::Snap>(&target.kind)) {
        return sentenceTitle(snap->action);
    }
    if (const auto* wanted = std::get_if<HotkeyTarget::Arrangement>(&target.kind)) {
        const auto* const found = findArrangement(stored.arrangements, wanted->id);
        return found != nullptr ? found->name : "Arrangement";
    }
    return "Tile this display";
}

std::optional<KeyCombo> KeyBindings::comboFor(const HotkeyTarget& target, const Stored& stored) {
    if (const auto* wanted = std::get_if<HotkeyTarget::Arrangement>(&target.kind)) {
        const auto* const found = findArrangement(stored.arrangements, wanted->id);
        return found != nullptr ? found->combo : std::nullopt;
    }
    const auto entry = stored.keymap.find(target.targetID());
    if (entry == stored.keymap.end()) {
        return defaultCombo(target);
    }
    return entry->second.keyCode < 0 ? std::nullopt : std::optional(entry->second);
}

std::optional<Keymap> KeyBindings::readKeymap() const {
    const auto data = defaults_.dataForKey(preference::keymap);
    return data ? decodeKeymap(*data) : std::nullopt;
}

bool KeyBindings::mayReplaceKeymap() {
    return !defaults_.objectForKey(preference::keymap) || readKeymap() ||
           defaults_.keepAside(preference::keymap);
}

void KeyBindings::replaceKeymap(const Keymap& keymap) {
    if (auto json = encodeKeymap(keymap); json && mayReplaceKeymap()) {
        defaults_.setObject(preference::keymap, *std::move(json));
    }
}

}  // namespace tessellon
