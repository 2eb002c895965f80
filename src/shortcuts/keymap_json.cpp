#include "shortcuts/keymap_json.h"

#include <nlohmann/json.hpp>

namespace tessellon {

std::optional<std::vector<std::uint8_t>> encodeKeymap(const Keymap& keymap) {
    JsonWriter writer;
    writer.beginObject();
    for (const auto& [id, combo] : keymap) {
        writer.key(id);
        writeKeyCombo(writer, combo);
    }
    writer.endObject();
    return std::move(writer).finish();
}

std::optional<Keymap> decodeKeymap(std::span<const std::uint8_t> json) {
    const auto document = parseJson(json);
    if (!document || !document->is_object()) {
        return std::nullopt;
    }
    Keymap keymap;
    for (const auto& [id, value] : document->items()) {
        auto combo = keyComboFromJson(value);
        if (!combo) {
            return std::nullopt;
        }
        keymap.emplace(id, *std::move(combo));
    }
    return keymap;
}

}  // namespace tessellon
