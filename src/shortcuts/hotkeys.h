// The global shortcuts: every binding registered as a hot key, whichever application is in front,
// and the pressed ones handed on. The application owns one.
#pragma once

#include "base/notification_center.h"
#include "base/token.h"
#include "platform/hot_key_center.h"
#include "shortcuts/hotkey_target.h"
#include "shortcuts/key_bindings.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

namespace tessellon {

/// "TSLN": says of a hot key that it is ours.
inline constexpr std::uint32_t hotKeySignature = 0x54534C4E;

/// The modifier bits of a registration (hot_key_modifier) for those of a combination
/// (modifier_flag); all other bits are dropped.
std::uint32_t hotKeyModifiers(std::uint64_t mods);

class Hotkeys {
  public:
    using Handler = std::function<void(const HotkeyTarget&)>;

    /// All three must outlive the hot keys. Nothing is registered before there is a handler.
    Hotkeys(HotKeyCenter& center, KeyBindings& bindings, NotificationCenter& notifications);
    Hotkeys(const Hotkeys&) = delete;
    Hotkeys& operator=(const Hotkeys&) = delete;

    /// Sets what a pressed shortcut calls, and registers the hot keys. Only the first call counts.
    /// The handler runs while the event is dispatched; it may register anew.
    void setHandler(Handler handler);

    /// Registers all bindings anew (none while paused or without a handler) and posts
    /// notification::hotkeysChanged.
    void registerHotkeys();

    /// The same, but only when the bindings differ from those registered last.
    void registerChangedBindings();

    /// While true no hot key is registered, so that a recorder sees the keys. Changing it registers
    /// anew.
    bool recordingPause() const { return recordingPause_; }
    void setRecordingPause(bool paused);

    /// How many hot keys are registered.
    std::size_t registeredCount() const { return registrations_.size(); }

    /// The targets of the registered hot keys; the place in the list is the id.
    const std::vector<HotkeyTarget>& registeredTargets() const { return registeredTargets_; }

    /// Targets whose combination belongs to another program or to an earlier target, or is none
    /// that could be registered.
    const std::unordered_set<HotkeyTarget>& takenTargets() const { return takenTargets_; }

    /// The earlier target that the combination of a taken one is registered for. Nothing when it
    /// belongs to another program.
    std::optional<HotkeyTarget> holder(const HotkeyTarget& taken) const;

    /// How the registration went, in one line for the user.
    std::string statusText() const;

  private:
    void registerBindings();
    std::optional<Token> registerCombo(const KeyCombo& combo);
    HotKeyEventStatus hotkeyEventCallback(const std::optional<HotKeyId>& id) const;

    HotKeyCenter& center_;
    KeyBindings& bindings_;
    NotificationCenter& notifications_;
    Handler hotkeyHandler_;
    std::vector<KeyBinding> lastBindings_;
    std::vector<Token> registrations_;
    std::vector<HotkeyTarget> registeredTargets_;
    std::unordered_set<HotkeyTarget> takenTargets_;
    bool recordingPause_ = false;
    Token eventHandler_;
    Token rebound_;
    Token keyboardChanged_;
};

}  // namespace tessellon
