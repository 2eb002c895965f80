#include "platform/x11/keyboard.h"

#include <xcb/xcb_keysyms.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon-x11.h>

// The header names a member with a C++ keyword.
#ifdef __clang__
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include "base/modifier_flag.h"
#include "platform/hot_key_center.h"
#include "platform/key_event.h"
#include "platform/x11/virtual_key_names.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace tessellon::x11 {
namespace {

constexpr std::uint32_t virtualKeyCodes = 128;

// What a busy server may be late with a repeat, and the longest pause that is set in practice, for
// servers that do not tell; both in milliseconds.
constexpr xcb_timestamp_t repeatMargin = 500;
constexpr xcb_timestamp_t usualLongestRepeatGap = 2000;

struct ContextDeleter {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
};
struct SymbolsDeleter {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
};

/// Which of the eight modifiers (as a mask) the key symbols are on; 0 when on none.
class ModifierFinder {
  public:
    explicit ModifierFinder(const Connection& connection)
        : symbols_(xcb_key_symbols_alloc(connection.xcb())) {
        connection.countRoundTrip();
        mapping_.reset(xcb_get_modifier_mapping_reply(
            connection.xcb(), xcb_get_modifier_mapping_unchecked(connection.xcb()), nullptr));
    }

    std::uint16_t maskOf(std::initializer_list<xcb_keysym_t> wanted) const {
        if (!mapping_ || !symbols_) {
            return 0;
        }
        const auto* codes = xcb_get_modifier_mapping_keycodes(mapping_.get());
        const auto perModifier = mapping_->keycodes_per_modifier;
        for (unsigned modifier = 0; modifier < 8; ++modifier) {
            for (unsigned i = 0; i < perModifier; ++i) {
                const auto code = codes[modifier * perModifier + i];
                for (int column = 0; code != 0 && column < 4; ++column) {
                    const auto symbol = xcb_key_symbols_get_keysym(symbols_.get(), code, column);
                    for (const auto candidate : wanted) {
                        if (symbol == candidate) {
                            return static_cast<std::uint16_t>(1U << modifier);
                        }
                    }
                }
            }
        }
        return 0;
    }

  private:
    std::unique_ptr<xcb_key_symbols_t, SymbolsDeleter> symbols_;
    Reply<xcb_get_modifier_mapping_reply_t> mapping_;
};

std::uint16_t orElse(std::uint16_t mask, std::uint16_t fallback) {
    return mask != 0 ? mask : fallback;
}

}  // namespace

Keyboard::Keyboard(Connection& connection)
    : connection_(connection), longestRepeatGap_(usualLongestRepeatGap) {
    connection_.countRoundTrip();
    hasXkb_ = xkb_x11_setup_xkb_extension(
                  connection_.xcb(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
                  XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &xkbEvent_, nullptr) != 0;
    if (hasXkb_) {
        constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY |
                                         XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                         XCB_XKB_EVENT_TYPE_CONTROLS_NOTIFY;
        constexpr std::uint16_t parts =
            XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP | XCB_XKB_MAP_PART_KEY_TYPES;
        xcb_xkb_select_events(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts,
                              parts, nullptr);
        // A key that is held then gives presses only, and one release at its end.
        xcb_xkb_per_client_flags_unchecked(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD,
                                           XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
                                           XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
    }
    map_ = read();
    readControls();
    listener_ = connection_.addStateListener([this](const auto& event) { onEvent(event); });
    reloader_ = connection_.idle().subscribe([this] {
        if (std::exchange(controlsStale_, false)) {
            readControls();
        }
        if (!std::exchange(stale_, false)) {
            return;
        }
        auto map = read();
        if (map != map_) {
            map_ = std::move(map);
            changed_.emit();
        }
    });
}

Keyboard::~Keyboard() = default;

void Keyboard::onEvent(const xcb_generic_event_t& event) {
    const auto type = eventType(event);
    if (type == XCB_MAPPING_NOTIFY) {
        stale_ = true;
    } else if (hasXkb_ && type == xkbEvent_) {
        const auto kind = eventAs<xcb_xkb_new_keyboard_notify_event_t>(event).xkbType;
        stale_ = stale_ || kind == XCB_XKB_NEW_KEYBOARD_NOTIFY || kind == XCB_XKB_MAP_NOTIFY;
        controlsStale_ = controlsStale_ || kind == XCB_XKB_NEW_KEYBOARD_NOTIFY ||
                         kind == XCB_XKB_CONTROLS_NOTIFY;
    }
}

void Keyboard::readControls() {
    if (!hasXkb_) {
        return;
    }
    connection_.countRoundTrip();
    const Reply<xcb_xkb_get_controls_reply_t> controls(xcb_xkb_get_controls_reply(
        connection_.xcb(),
        xcb_xkb_get_controls_unchecked(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD), nullptr));
    if (controls) {
        longestRepeatGap_ =
            std::max<xcb_timestamp_t>(controls->repeatDelay, controls->repeatInterval) +
            repeatMargin;
    }
}

Keyboard::Map Keyboard::read() {
    Map map;
    if (hasXkb_) {
        const std::unique_ptr<xkb_context, ContextDeleter> context(
            xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES));
        const auto device = xkb_x11_get_core_keyboard_device_id(connection_.xcb());
        const std::shared_ptr<xkb_keymap> keymap(
            context && device >= 0
                ? xkb_x11_keymap_new_from_device(context.get(), connection_.xcb(), device,
                                                 XKB_KEYMAP_COMPILE_NO_FLAGS)
                : nullptr,
            xkb_keymap_unref);
        connection_.countRoundTrip();
        if (keymap) {
            keymap_ = keymap;
        }
        for (std::uint32_t code = 0; keymap && code < virtualKeyCodes; ++code) {
            const std::string name(xkbKeyName(code));
            const auto found = name.empty() ? XKB_KEYCODE_INVALID
                                            : xkb_keymap_key_by_name(keymap.get(), name.c_str());
            if (found != XKB_KEYCODE_INVALID && found <= 255) {
                map.keyCodes.emplace(name, static_cast<xcb_keycode_t>(found));
            }
        }
    }
    if (map.keyCodes.empty()) {
        map.keyCodes = map_.keyCodes;  // better the keys as they were than none
    }
    const ModifierFinder finder(connection_);
    map.alt = orElse(finder.maskOf({XKB_KEY_Alt_L, XKB_KEY_Alt_R, XKB_KEY_Meta_L}), XCB_MOD_MASK_1);
    map.super = orElse(finder.maskOf({XKB_KEY_Super_L, XKB_KEY_Super_R}), XCB_MOD_MASK_4);
    map.numLock = finder.maskOf({XKB_KEY_Num_Lock});
    const std::array<std::uint16_t, 3> locks{XCB_MOD_MASK_LOCK, map.numLock,
                                             finder.maskOf({XKB_KEY_Scroll_Lock})};
    map.lockVariants.assign(1, 0);
    for (const auto lock : locks) {
        // A lock on a modifier that means something else here cannot be told from it.
        if (lock == 0 || (map.locks & lock) != 0 || lock == map.alt || lock == map.super) {
            continue;
        }
        map.locks |= lock;
        for (std::size_t i = 0, count = map.lockVariants.size(); i < count; ++i) {
            map.lockVariants.push_back(static_cast<std::uint16_t>(map.lockVariants[i] | lock));
        }
    }
    const auto otherwiseUsed =
        XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | map.alt | map.super | map.locks;
    map.furtherLevels = static_cast<std::uint16_t>(
        (finder.maskOf({XKB_KEY_ISO_Level3_Shift}) | finder.maskOf({XKB_KEY_ISO_Level5_Shift})) &
        ~otherwiseUsed);
    return map;
}

std::optional<xcb_keycode_t> Keyboard::keyCode(std::uint32_t virtualKeyCode) const {
    if (virtualKeyCode >= virtual_key::firstUnnamed && virtualKeyCode <= virtual_key::lastUnnamed) {
        const auto code = static_cast<xcb_keycode_t>(virtualKeyCode - virtual_key::firstUnnamed);
        const bool exists = keymap_ && xkb_keymap_key_get_name(keymap_.get(), code) != nullptr;
        return exists ? std::optional(code) : std::nullopt;
    }
    const auto found = map_.keyCodes.find(xkbKeyName(virtualKeyCode));
    if (found == map_.keyCodes.end()) {
        return std::nullopt;
    }
    return found->second;
}

std::uint16_t Keyboard::modifierMask(std::uint32_t hotKeyModifiers) const {
    std::uint16_t mask = 0;
    const auto add = [&](std::uint32_t modifier, std::uint16_t bits) {
        if ((hotKeyModifiers & modifier) != 0) {
            mask = static_cast<std::uint16_t>(mask | bits);
        }
    };
    add(hot_key_modifier::command, map_.super);
    add(hot_key_modifier::shift, XCB_MOD_MASK_SHIFT);
    add(hot_key_modifier::option, map_.alt);
    add(hot_key_modifier::control, XCB_MOD_MASK_CONTROL);
    return mask;
}

std::uint32_t Keyboard::virtualKeyCode(xcb_keycode_t code) const {
    for (std::uint32_t candidate = 0; candidate < virtualKeyCodes; ++candidate) {
        if (keyCode(candidate) == code) {
            return candidate;
        }
    }
    // The keys' names in XKB would say no more: for most of these keys they are this number.
    return keymap_ ? virtual_key::firstUnnamed + code : virtual_key::unknown;
}

std::uint16_t Keyboard::flagMask(std::uint64_t flags) const {
    std::uint16_t mask = 0;
    const auto add = [&](std::uint64_t flag, std::uint16_t bits) {
        if ((flags & flag) != 0) {
            mask = static_cast<std::uint16_t>(mask | bits);
        }
    };
    add(modifier_flag::command, map_.super);
    add(modifier_flag::shift, XCB_MOD_MASK_SHIFT);
    add(modifier_flag::option, map_.alt);
    add(modifier_flag::control, XCB_MOD_MASK_CONTROL);
    return mask;
}

std::uint64_t Keyboard::modifierFlags(std::uint16_t state) const {
    std::uint64_t flags = 0;
    for (const auto flag : {modifier_flag::command, modifier_flag::shift, modifier_flag::option,
                            modifier_flag::control}) {
        flags |= (state & flagMask(flag)) != 0 ? flag : 0;
    }
    return flags;
}

std::uint16_t Keyboard::withoutLocks(std::uint16_t state) const {
    // Above the eight modifiers are the pointer's buttons and the keyboard group.
    return static_cast<std::uint16_t>(state & 0xff & ~map_.locks);
}

}  // namespace tessellon::x11
