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

struct xkb_keymap;

namespace tessellon::x11 {

class Keyboard {
  public:
    /// Reads the mapping and follows its changes.
    explicit Keyboard(Connection& connection);
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    /// The X key code of a physical key given by its virtual key code (virtual_key), unnamed ones
    /// included; nothing when this keyboard has no such key.
    std::optional<xcb_keycode_t> keyCode(std::uint32_t virtualKeyCode) const;

    /// The X modifier mask for bits of hot_key_modifier.
    std::uint16_t modifierMask(std::uint32_t hotKeyModifiers) const;

    /// The virtual key code of the physical key with this X key code, an unnamed one when the table
    /// has none for it; virtual_key::unknown while the keys cannot be read.
    std::uint32_t virtualKeyCode(xcb_keycode_t code) const;

    /// The X modifier mask for bits of modifier_flag.
    std::uint16_t flagMask(std::uint64_t flags) const;
    /// The bits of modifier_flag in an event's state; rightCommand is not among them.
    std::uint64_t modifierFlags(std::uint16_t state) const;

    /// The keys as they are mapped now, with all layouts; null when they could not be read. Stays
    /// as it is while it is held.
    std::shared_ptr<xkb_keymap> keymap() const { return keymap_; }

    /// What begins the events of XKB; nothing when the server does not have it.
    std::optional<std::uint8_t> xkbEvent() const {
        return hasXkb_ ? std::optional(xkbEvent_) : std::nullopt;
    }

    /// How long after its press, or its latest repeat, a key that is held may repeat for the first
    /// time or again, in milliseconds of the server's clock. A later press is a new one even if the
    /// release between was lost to somebody else's grab.
    xcb_timestamp_t longestRepeatGap() const { return longestRepeatGap_; }

    /// The modifiers that the keys for further levels are on (ISO_Level3_Shift, which is AltGr, and
    /// ISO_Level5_Shift) as far as they are good for nothing else; 0 when there are none.
    std::uint16_t furtherLevelsMask() const { return map_.furtherLevels; }

    /// The modifier that Num Lock is on, 0 when on none.
    std::uint16_t numLockMask() const { return map_.numLock; }

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
        std::uint16_t numLock = 0;
        std::uint16_t furtherLevels = 0;
        std::uint16_t locks = 0;
        std::vector<std::uint16_t> lockVariants;
        bool operator==(const Map&) const = default;
    };

    Map read();
    void readControls();
    void onEvent(const xcb_generic_event_t& event);

    Connection& connection_;
    std::uint8_t xkbEvent_ = 0;
    bool hasXkb_ = false;
    bool stale_ = false;
    bool controlsStale_ = false;
    xcb_timestamp_t longestRepeatGap_;
    Map map_;
    std::shared_ptr<xkb_keymap> keymap_;
    Signal<> changed_;
    Token listener_;
    Token reloader_;
};

}  // namespace tessellon::x11
