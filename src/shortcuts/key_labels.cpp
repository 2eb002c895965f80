#include "shortcuts/key_labels.h"

#include "base/text.h"

#include <algorithm>

namespace tessellon {
namespace {

struct ModifierGlyph {
    std::uint64_t flag;
    const char* glyph;
};

constexpr std::array<ModifierGlyph, 4> modifierGlyphTable{{
    {modifier_flag::control, "⌃"},
    {modifier_flag::option, "⌥"},
    {modifier_flag::shift, "⇧"},
    {modifier_flag::command, "⌘"},
}};

}  // namespace

std::string keyLabel(std::int64_t keyCode, std::string_view typedCharacters) {
    const auto* const found =
        std::find_if(keyLabels.begin(), keyLabels.end(),
                     [keyCode](const KeyLabel& row) { return row.keyCode == keyCode; });
    if (found != keyLabels.end()) {
        return std::string(found->label);
    }
    auto typed = toUpper(trimWhitespace(typedCharacters));
    return typed.empty() ? "#" + std::to_string(keyCode) : typed;
}

std::vector<std::string> modifierGlyphs(std::uint64_t mods) {
    std::vector<std::string> glyphs;
    for (const auto& [flag, glyph] : modifierGlyphTable) {
        if ((mods & flag) != 0) {
            glyphs.emplace_back(glyph);
        }
    }
    return glyphs;
}

std::vector<std::string> displayKeys(const KeyCombo& combo) {
    auto keys = modifierGlyphs(combo.mods);
    keys.push_back(combo.key);
    return keys;
}

std::string displayText(const KeyCombo& combo) {
    std::string text;
    for (const auto& key : displayKeys(combo)) {
        text += key;
    }
    return text;
}

}  // namespace tessellon
