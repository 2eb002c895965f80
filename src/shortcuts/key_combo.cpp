#include "shortcuts/key_combo.h"

#include <nlohmann/json.hpp>

namespace tessellon {

bool sameShortcut(const KeyCombo& a, const KeyCombo& b) {
    return a.keyCode == b.keyCode && ((a.mods ^ b.mods) & modifier_flag::all) == 0;
}

std::optional<KeyCombo> keyComboFromJson(const Json& value) {
    const auto keyCode = jsonInteger(value, "keyCode");
    const auto mods = jsonUnsigned(value, "mods");
    auto key = jsonString(value, "key");
    if (!keyCode || !mods || !key) {
        return std::nullopt;
    }
    return KeyCombo{*keyCode, *mods & modifier_flag::all, *std::move(key)};
}

void writeKeyCombo(JsonWriter& writer, const KeyCombo& combo) {
    writer.beginObject();
    writer.key("keyCode").integer(combo.keyCode);
    writer.key("mods").unsignedInteger(combo.mods & modifier_flag::all);
    writer.key("key").string(combo.key);
    writer.endObject();
}

}  // namespace tessellon
