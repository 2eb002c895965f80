// A key that went down while one of our own panels had the keyboard.
#pragma once

#include <cstdint>
#include <string>

namespace tessellon {

/// Virtual key codes: they name physical keys by their place, whatever the layout.
namespace virtual_key {
inline constexpr std::uint32_t q = 12;
inline constexpr std::uint32_t returnKey = 36;
inline constexpr std::uint32_t comma = 43;
inline constexpr std::uint32_t slash = 44;
inline constexpr std::uint32_t escape = 53;
inline constexpr std::uint32_t keypadEnter = 76;
inline constexpr std::uint32_t leftArrow = 123;
inline constexpr std::uint32_t rightArrow = 124;
inline constexpr std::uint32_t downArrow = 125;
inline constexpr std::uint32_t upArrow = 126;
/// A key that has no virtual key code.
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
    /// What the key types with no modifier but Shift; "" when that is nothing.
    std::string charactersIgnoringModifiers;
};

}  // namespace tessellon
