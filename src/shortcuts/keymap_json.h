// The stored form of the shortcuts that differ from the built-in ones.
#pragma once

#include "shortcuts/key_combo.h"

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace tessellon {

/// Combinations by HotkeyTarget::targetID. A negative key code says that the user wants no
/// shortcut.
using Keymap = std::map<std::string, KeyCombo, std::less<>>;

/// A JSON object with its keys sorted; nothing when a text is not valid UTF-8.
std::optional<std::vector<std::uint8_t>> encodeKeymap(const Keymap& keymap);

/// Nothing unless it is an object of whole combinations.
std::optional<Keymap> decodeKeymap(std::span<const std::uint8_t> json);

}  // namespace tessellon
