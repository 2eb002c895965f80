#include "shortcuts/hotkeys.h"

#include "app/notification_names.h"

#include <algorithm>
#include <array>
#include <utility>

namespace tessellon {
namespace {

struct ModifierPair {
    std::uint64_t flag;
    std::uint32_t registered;
};

constexpr std::array<ModifierPair, 4> modifierPairs{{
    {modifier_flag::command, hot_key_modifier::command},
    {modifier_flag::shift, hot_key_modifier::shift},
    {modifier_flag::option, hot_key_modifier::option},
    {modifier_flag::control, hot_key_modifier::control},
}};

}  // namespace

std::uint32_t hotKeyModifiers(std::uint64_t mods) {
    std::uint32_t result = 0;
    for (const auto& [flag, registered] : modifierPairs) {
        if ((mods & flag) != 0) {
            result |= registered;
        }
    }
    return result;
}

Hotkeys::Hotkeys(HotKeyCenter& center, KeyBindings& bindings, NotificationCenter& notifications)
    : center_(center),
      bindings_(bindings),
      notifications_(notifications),
      rebound_(bindings.rebound().subscribe([this] { registerHotkeys(); })),
      keyboardChanged_(center.changed().subscribe([this] { registerHotkeys(); })) {}

void Hotkeys::setHandler(Handler handler) {
    if (hotkeyHandler_ || !handler) {
        return;
    }
    hotkeyHandler_ = std::move(handler);
    eventHandler_ = center_.installHandler(
        [this](const std::optional<HotKeyId>& id) { return hotkeyEventCallback(id); });
    registerHotkeys();
}

void Hotkeys::registerHotkeys() {
    registrations_.clear();
    registeredTargets_.clear();
    takenTargets_.clear();
    if (hotkeyHandler_ && !recordingPause_) {
        registerBindings();
    }
    notifications_.post(notification::hotkeysChanged);
}

void Hotkeys::registerChangedBindings() {
    if (bindings_.bindings() != lastBindings_) {
        registerHotkeys();
    }
}

void Hotkeys::registerBindings() {
    std::vector<KeyCombo> done;
    lastBindings_ = bindings_.bindings();
    for (const auto& [target, combo] : lastBindings_) {
        const bool isDone = std::any_of(
            done.begin(), done.end(),
            [&combo = combo](const KeyCombo& other) { return sameShortcut(combo, other); });
        auto registration = isDone ? std::nullopt : registerCombo(combo);
        if (!registration) {
            takenTargets_.insert(target);
            continue;
        }
        registrations_.push_back(*std::move(registration));
        registeredTargets_.push_back(target);
        done.push_back(combo);
    }
}

std::optional<Token> Hotkeys::registerCombo(const KeyCombo& combo) {
    if (!std::in_range<std::uint32_t>(combo.keyCode)) {
        return std::nullopt;
    }
    return center_.registerHotKey(
        static_cast<std::uint32_t>(combo.keyCode), hotKeyModifiers(combo.mods),
        {hotKeySignature, static_cast<std::uint32_t>(registeredTargets_.size())});
}

std::optional<HotkeyTarget> Hotkeys::holder(const HotkeyTarget& taken) const {
    const auto wanted = std::ranges::find(lastBindings_, taken, &KeyBinding::target);
    if (wanted == lastBindings_.end() || !takenTargets_.contains(taken)) {
        return std::nullopt;
    }
    const auto found = std::find_if(lastBindings_.begin(), wanted, [&](const KeyBinding& other) {
        return sameShortcut(other.combo, wanted->combo) && !takenTargets_.contains(other.target);
    });
    return found != wanted ? std::optional(found->target) : std::nullopt;
}

void Hotkeys::setRecordingPause(bool paused) {
    if (std::exchange(recordingPause_, paused) != paused) {
        registerHotkeys();
    }
}

std::string Hotkeys::statusText() const {
    if (recordingPause_) {
        return "Recording… shortcuts are paused for a moment.";
    }
    auto text = std::to_string(registrations_.size()) + " shortcuts registered";
    if (!takenTargets_.empty()) {
        text += " · " + std::to_string(takenTargets_.size()) + " taken by another app";
    }
    return text;
}

HotKeyEventStatus Hotkeys::hotkeyEventCallback(const std::optional<HotKeyId>& id) const {
    if (!id || id->signature != hotKeySignature) {
        return HotKeyEventStatus::notHandled;
    }
    if (id->id < registeredTargets_.size() && hotkeyHandler_) {
        const auto target = registeredTargets_[id->id];  // registering anew empties the list
        hotkeyHandler_(target);
    }
    return HotKeyEventStatus::handled;
}

}  // namespace tessellon
