// The keyboard as it is mapped now: where the keys are and which modifier bits mean what.
#pragma once

#include "base/signal.h"
#include "base/token.h"
#include "platform/x11/connection.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::x11 {

class Keyboard {
  public:
    /// Reads the mapping and follows its changes.
    explicit Keyboard(Connection& connection);
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    /// The X key code of a physical key given by its virtual key code; nothing when this keyboard
    /// has no such key.
    std::optional<xcb_keycode_t> keyCode(std::uint32_t virtualKeyCode) const;

    /// The X modifier mask for bits of hot_key_modifier.
    std::uint16_t modifierMask(std::uint32_t hotKeyModifiers) const;

    /// The modifiers of an event's state without the locks.
    std::uint16_t withoutLocks(std::uint16_t state) const;

    /// Every combination of the locks that can be on (Caps Lock, Num Lock, Scroll Lock), none
    /// first.
    const std::vector<std::uint16_t>& lockVariants() const { return map_.lockVariants; }

    /// Emitted after keys or modifiers moved. The server also announces the keyboard anew whenever
    /// another one of several is used; as long as they agree, nothing has changed.
    const Signal<>& changed() const { return changed_; }

  private:
    /// What the key codes and modifiers are good for.
    struct Map {
        std::map<std::string, xcb_keycode_t, std::less<>> keyCodes;
        std::uint16_t alt = 0;
        std::uint16_t super = 0;
        std::uint16_t locks = 0;
        std::vector<std::uint16_t> lockVariants;
        bool operator==(const Map&) const = default;
    };

    Map read() const;
    void onEvent(const xcb_generic_event_t& event);

    Connection& connection_;
    std::uint8_t xkbEvent_ = 0;
    bool hasXkb_ = false;
    bool stale_ = false;
    Map map_;
    Signal<> changed_;
    Token listener_;
    Token reloader_;
};

}  // namespace tessellon::x11
