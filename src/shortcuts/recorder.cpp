#include "shortcuts/recorder.h"

#include "app/notification_names.h"
#include "base/modifier_flag.h"
#include "shortcuts/key_labels.h"

#include <utility>

namespace tessellon {
namespace {

constexpr auto modifiersOfShortcuts =
    modifier_flag::control | modifier_flag::option | modifier_flag::command;

constexpr auto addModifierNote = "Add ⌃, ⌥ or ⌘ so it doesn't clash with typing.";

bool clears(const KeyEvent& event) {
    return event.keyCode == virtual_key::deleteBackward ||
           event.keyCode == virtual_key::deleteForward;
}

}  // namespace

Recorder::Recorder(const Services& services)
    : services_(services),
      hotkeysChanged_(services.notifications.observe(notification::hotkeysChanged,
                                                     [this](const auto& /*object*/) {
                                                         ++revision_;
                                                         changed_.emit();
                                                     })),
      willReset_(services.bindings.willReset().subscribe([this] { stop(); })),
      arrangementsChanged_(
          services.notifications.observe(notification::arrangementsChanged,
                                         [this](const auto& /*object*/) { stopWithoutTarget(); })),
      reloaded_(services.bindings.reloaded().subscribe([this] { stopWithoutTarget(); })) {}

Recorder::~Recorder() {
    hotkeysChanged_.reset();
    willReset_.reset();
    arrangementsChanged_.reset();
    reloaded_.reset();
    end();
}

void Recorder::toggle(const HotkeyTarget& target) {
    if (target_ == target) {
        stop();
        return;
    }
    stop();
    begin(target);
}

std::optional<std::string> Recorder::holderTitle(const HotkeyTarget& target) const {
    const auto holder = services_.hotkeys.holder(target);
    return holder ? std::optional(title(*holder)) : std::nullopt;
}

void Recorder::begin(const HotkeyTarget& target) {
    target_ = target;
    note_.reset();
    services_.hotkeys.setRecordingPause(true);
    if (target_ != target) {
        return;  // whoever was told of the pause has ended it
    }
    if (auto monitor = services_.eventMonitors.addLocalKeyMonitor([this](const KeyEvent& event) {
            onKey(event);
            return KeyVerdict::used;
        })) {
        monitor_ = *std::move(monitor);
    }
    if (const auto window = services_.application.keyWindowFrame()) {
        // Everything that is typed ends at the monitor.
        resignObserver_ = services_.keyboardFocus.take(
            *window, {.key = [](const TypedKey& /*key*/) {}, .lost = [this] { stop(); }});
    }
    changed_.emit();
}

void Recorder::stop() {
    if (end()) {
        changed_.emit();
    }
}

bool Recorder::end() {
    monitor_.reset();
    resignObserver_.reset();
    if (!target_) {
        return false;
    }
    target_.reset();
    services_.hotkeys.setRecordingPause(false);
    return true;
}

void Recorder::stopWithoutTarget() {
    if (target_ && !services_.bindings.exists(*target_)) {
        stop();
    }
}

void Recorder::onKey(const KeyEvent& event) {
    if (!target_) {
        return;
    }
    const HotkeyTarget target = *target_;
    const auto modifiers = event.modifiers & modifier_flag::all;
    // A combination that leaves out one of the keys that are held would be another one.
    const bool canBeStored = (modifiers & modifiersOfShortcuts) != 0 && !event.isOnFurtherLevel;
    const bool isPlain = modifiers == 0 && !event.isOnFurtherLevel;
    if (isPlain && clears(event)) {
        services_.bindings.setCombo(std::nullopt, target);
        services_.hotkeys.registerHotkeys();
        note_.reset();
        stop();
    } else if (isPlain && event.keyCode == virtual_key::escape) {
        stop();
    } else if (!canBeStored) {
        suggestModifier(event);
    } else {
        const auto moved = services_.bindings.assignCombo(
            event.keyCode, modifiers, keyLabel(event.keyCode, event.charactersIgnoringModifiers),
            target);
        note_ = moved ? std::optional("Moved from “" + *moved + "”.") : std::nullopt;
        stop();
    }
}

void Recorder::suggestModifier(const KeyEvent& event) {
    note_ = addModifierNote;
    // A key that is held has been answered.
    if (!event.isRepeat) {
        services_.beep.beep();
    }
    changed_.emit();
}

}  // namespace tessellon
