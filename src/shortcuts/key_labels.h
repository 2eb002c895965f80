// How keys and combinations are shown to the user.
#pragma once

#include "shortcuts/key_combo.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

struct KeyLabel {
    std::int64_t keyCode;
    std::string_view label;
};

/// The keys that are labelled by their place, whatever they type.
inline constexpr std::array<KeyLabel, 27> keyLabels{{
    {123, "←"}, {124, "→"},  {126, "↑"},    {125, "↓"},   {36, "↩"},    {76, "⌤"},    {51, "⌫"},
    {117, "⌦"}, {48, "⇥"},   {49, "Space"}, {53, "⎋"},    {115, "↖"},   {119, "↘"},   {116, "⇞"},
    {121, "⇟"}, {122, "F1"}, {120, "F2"},   {99, "F3"},   {118, "F4"},  {96, "F5"},   {97, "F6"},
    {98, "F7"}, {100, "F8"}, {101, "F9"},   {109, "F10"}, {103, "F11"}, {111, "F12"},
}};

/// The label of a key: from the table, else what it types without modifiers, in upper case and
/// without white space around it, else "#" and the key code.
std::string keyLabel(std::int64_t keyCode, std::string_view typedCharacters);

/// The glyphs of the modifiers in `mods` (bits of modifier_flag): control, option, shift, command.
std::vector<std::string> modifierGlyphs(std::uint64_t mods);

/// The modifier glyphs and the key's label, one text for each key chip.
std::vector<std::string> displayKeys(const KeyCombo& combo);

/// The same as one text, such as "⌃⌥←".
std::string displayText(const KeyCombo& combo);

}  // namespace tessellon
