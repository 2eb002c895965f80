// The modifier keys as bits, as shortcuts store them and events carry them. On this desktop command
// is Super, option is Alt.
#pragma once

#include <cstdint>

namespace tessellon::modifier_flag {

inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
/// The only bits that are stored or compared.
inline constexpr std::uint64_t all = shift | control | option | command;

/// Set beside `command` while the right one of the two keys is down.
inline constexpr std::uint64_t rightCommand = 0x10;

}  // namespace tessellon::modifier_flag
