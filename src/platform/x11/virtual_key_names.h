// Which physical key a virtual key code means, by the name of its place in XKB's key-code files.
#pragma once

#include <cstdint>
#include <string_view>

namespace tessellon::x11 {

/// The XKB key name, such as "AD07" for the key where a US keyboard has its U; empty for codes that
/// stand for no key.
std::string_view xkbKeyName(std::uint32_t virtualKeyCode);

}  // namespace tessellon::x11
