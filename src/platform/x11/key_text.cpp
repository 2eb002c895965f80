#include "platform/x11/key_text.h"

#include <algorithm>
#include <array>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <utility>

#include <xkbcommon/xkbcommon-compose.h>
#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

namespace tessellon::x11 {
namespace {

// The locale that says which compose sequences there are: the program's, or what the user has set
// while the program has none.
const char* composeLocale() {
    const char* own = std::setlocale(LC_CTYPE, nullptr);
    if (own != nullptr && std::strcmp(own, "C") != 0) {
        return own;
    }
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return value;
        }
    }
    return "C";
}

bool beginsSequence(xkb_keysym_t symbol) {
    return (symbol >= XKB_KEY_dead_grave && symbol <= 0xfe93) || symbol == XKB_KEY_Multi_key;
}

bool isOnKeypad(xkb_keysym_t symbol) {
    return symbol >= XKB_KEY_KP_Space && symbol <= XKB_KEY_KP_Equal;
}

// An event carries the keyboard's layout above the pointer's buttons.
constexpr std::uint16_t layoutBits = 3U << 13U;

struct DeadKey {
    xkb_keysym_t symbol;
    std::string_view sign;
};

// What is engraved on the dead keys, as signs that stand by themselves.
constexpr std::array<DeadKey, 18> deadKeys{{
    {XKB_KEY_dead_grave, "`"},
    {XKB_KEY_dead_acute, "´"},
    {XKB_KEY_dead_circumflex, "^"},
    {XKB_KEY_dead_tilde, "~"},
    {XKB_KEY_dead_macron, "¯"},
    {XKB_KEY_dead_breve, "˘"},
    {XKB_KEY_dead_abovedot, "˙"},
    {XKB_KEY_dead_diaeresis, "¨"},
    {XKB_KEY_dead_abovering, "˚"},
    {XKB_KEY_dead_doubleacute, "˝"},
    {XKB_KEY_dead_caron, "ˇ"},
    {XKB_KEY_dead_cedilla, "¸"},
    {XKB_KEY_dead_ogonek, "˛"},
    {XKB_KEY_dead_voiced_sound, "゛"},
    {XKB_KEY_dead_semivoiced_sound, "゜"},
    {XKB_KEY_dead_stroke, "/"},
    {XKB_KEY_dead_abovecomma, "᾿"},
    {XKB_KEY_dead_abovereversedcomma, "῾"},
}};

std::string signOfDeadKey(xkb_keysym_t symbol) {
    const auto* const found = std::find_if(
        deadKeys.begin(), deadKeys.end(), [=](const DeadKey& row) { return row.symbol == symbol; });
    return found != deadKeys.end() ? std::string(found->sign) : std::string{};
}

std::shared_ptr<xkb_compose_state> makeComposeState() {
    const std::shared_ptr<xkb_context> context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES),
                                               xkb_context_unref);
    const std::shared_ptr<xkb_compose_table> table(
        context ? xkb_compose_table_new_from_locale(context.get(), composeLocale(),
                                                    XKB_COMPOSE_COMPILE_NO_FLAGS)
                : nullptr,
        xkb_compose_table_unref);
    return {table ? xkb_compose_state_new(table.get(), XKB_COMPOSE_STATE_NO_FLAGS) : nullptr,
            xkb_compose_state_unref};
}

}  // namespace

KeyText::KeyText(const Keyboard& keyboard) : keyboard_(keyboard) {
    followKeyboard();
}

void KeyText::followKeyboard() {
    // Another layout may be set at any time. A compose sequence that has begun goes on.
    if (auto keymap = keyboard_.keymap(); keymap != keymap_) {
        keymap_ = std::move(keymap);
        state_.reset(keymap_ ? xkb_state_new(keymap_.get()) : nullptr, xkb_state_unref);
    }
}

void KeyText::setState(std::uint16_t state) {
    // All modifiers are together, whatever holds them.
    xkb_state_update_mask(state_.get(), state & 0xffU, 0, 0, (state & layoutBits) >> 13U, 0, 0);
}

std::string KeyText::textWith(xcb_keycode_t code, std::uint16_t state) {
    setState(state);
    std::array<char, 16> text{};
    const auto length = xkb_state_key_get_utf8(state_.get(), code, text.data(), text.size());
    return length > 0 && static_cast<std::size_t>(length) < text.size()
               ? std::string(text.data(), static_cast<std::size_t>(length))
               : std::string{};
}

std::string KeyText::textIgnoringModifiers(const xcb_key_press_event_t& event) {
    const auto layout = static_cast<std::uint16_t>(event.state & layoutBits);
    auto text = textWith(event.detail,
                         static_cast<std::uint16_t>(layout | (event.state & XCB_MOD_MASK_SHIFT)));
    if (!text.empty()) {
        return text;
    }
    const auto symbol = xkb_state_key_get_one_sym(state_.get(), event.detail);
    if (isOnKeypad(symbol)) {
        return textWith(event.detail, static_cast<std::uint16_t>(layout | keyboard_.numLockMask()));
    }
    return signOfDeadKey(symbol);
}

bool KeyText::typesLatinQ(std::uint16_t state) {
    setState(state);
    const auto last = xkb_keymap_max_keycode(keymap_.get());
    for (auto code = xkb_keymap_min_keycode(keymap_.get()); code <= last; ++code) {
        const auto layout = xkb_state_key_get_layout(state_.get(), code);
        const xkb_keysym_t* symbols = nullptr;
        if (layout != XKB_LAYOUT_INVALID &&
            xkb_keymap_key_get_syms_by_level(keymap_.get(), code, layout, 0, &symbols) == 1 &&
            *symbols == XKB_KEY_q) {
            return true;
        }
    }
    return false;
}

KeyText::Typed KeyText::describe(const xcb_key_press_event_t& event) {
    followKeyboard();
    Typed typed;
    typed.event.keyCode = keyboard_.virtualKeyCode(event.detail);
    typed.event.modifiers = keyboard_.modifierFlags(event.state);
    typed.event.isOnFurtherLevel = (event.state & keyboard_.furtherLevelsMask()) != 0;
    if (state_) {
        typed.event.layoutIsLatin = typesLatinQ(event.state);
        typed.event.charactersIgnoringModifiers = textIgnoringModifiers(event);
        typed.event.characters = textWith(event.detail, event.state);
        typed.symbol = xkb_state_key_get_one_sym(state_.get(), event.detail);
    }
    return typed;
}

KeyText::Typed KeyText::press(const xcb_key_press_event_t& event) {
    auto typed = describe(event);
    compose(typed);
    return typed;
}

KeyText::Typed KeyText::release(const xcb_key_release_event_t& event) {
    auto typed = describe(event);
    typed.event.characters.clear();
    return typed;
}

void KeyText::compose(Typed& typed) {
    // The table takes longer to read than a key should take, and few ever need it.
    if (!compose_ && beginsSequence(typed.symbol)) {
        compose_ = makeComposeState();
    }
    if (!compose_ ||
        xkb_compose_state_feed(compose_.get(), typed.symbol) != XKB_COMPOSE_FEED_ACCEPTED) {
        return;
    }
    switch (xkb_compose_state_get_status(compose_.get())) {
        case XKB_COMPOSE_NOTHING:
            break;
        case XKB_COMPOSE_COMPOSING:
            typed.event.characters.clear();
            break;
        case XKB_COMPOSE_CANCELLED:
            typed.event.characters.clear();
            xkb_compose_state_reset(compose_.get());
            break;
        case XKB_COMPOSE_COMPOSED: {
            std::array<char, 64> text{};
            xkb_compose_state_get_utf8(compose_.get(), text.data(), text.size());
            typed.event.characters = text.data();
            const auto symbol = xkb_compose_state_get_one_sym(compose_.get());
            typed.symbol = symbol != XKB_KEY_NoSymbol ? symbol : typed.symbol;
            xkb_compose_state_reset(compose_.get());
            break;
        }
    }
}

bool KeyText::isModifier(const xcb_key_press_event_t& event) {
    followKeyboard();
    if (!state_) {
        return false;
    }
    setState(event.state);
    const auto symbol = xkb_state_key_get_one_sym(state_.get(), event.detail);
    return (symbol >= XKB_KEY_Shift_L && symbol <= XKB_KEY_Hyper_R) ||
           (symbol >= XKB_KEY_ISO_Lock && symbol <= XKB_KEY_ISO_Level5_Lock) ||
           symbol == XKB_KEY_Mode_switch || symbol == XKB_KEY_Num_Lock;
}

}  // namespace tessellon::x11
