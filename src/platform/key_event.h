// A key that went down while one of our own panels or windows had the keyboard.
#pragma once

#include <cstdint>
#include <string>

namespace tessellon {

/// Virtual key codes: they name physical keys by their place, whatever the layout. Keys that the
/// table of these codes leaves out, such as those for sound and brightness, have a code of their
/// own from `firstUnnamed` on.
namespace virtual_key {
inline constexpr std::uint32_t q = 12;
inline constexpr std::uint32_t returnKey = 36;
inline constexpr std::uint32_t comma = 43;
inline constexpr std::uint32_t slash = 44;
inline constexpr std::uint32_t deleteBackward = 51;
inline constexpr std::uint32_t escape = 53;
inline constexpr std::uint32_t keypadEnter = 76;
inline constexpr std::uint32_t deleteForward = 117;
inline constexpr std::uint32_t leftArrow = 123;
inline constexpr std::uint32_t rightArrow = 124;
inline constexpr std::uint32_t downArrow = 125;
inline constexpr std::uint32_t upArrow = 126;
/// To this is added the number that the kernel's input system (linux/input-event-codes.h) gives
/// the key, plus 8, which is also its key code on X servers. Stable across layouts and restarts.
inline constexpr std::uint32_t firstUnnamed = 0x100;
inline constexpr std::uint32_t lastUnnamed = firstUnnamed + 0xFF;
/// No key of this keyboard.
inline constexpr std::uint32_t unknown = 0xFFFF;
}  // namespace virtual_key

struct KeyEvent {
    std::uint32_t keyCode = virtual_key::unknown;
    /// Bits of modifier_flag.
    std::uint64_t modifiers = 0;
    /// The key is held and repeats.
    bool isRepeat = false;
    /// What is typed, in UTF-8; "" for keys that type nothing, and while a dead key waits.
    std::string characters;
    /// What the key types with no modifier but Shift; "" when that is nothing. Of a dead key it is
    /// its sign, of a key of the keypad what Num Lock makes of it.
    std::string charactersIgnoringModifiers;
    /// The layout in use is for a Latin script: some key types a plain q, so that a character tells
    /// which key is meant. Layouts of other scripts have their signs anywhere, and those of a few
    /// Latin ones, such as that of Esperanto, have no q; there only the place of a key tells.
    bool layoutIsLatin = true;
    /// A key that chooses a further level of signs, such as AltGr, is held. No shortcut can ask for
    /// it: modifier_flag has no bit for it.
    bool isOnFurtherLevel = false;
};

}  // namespace tessellon
