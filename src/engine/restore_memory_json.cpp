#include "engine/restore_memory_json.h"

#include "base/json.h"

#include <nlohmann/json.hpp>
#include <unordered_set>
#include <utility>

namespace tessellon {
namespace {

std::optional<Memory> decodeMemory(const Json& object) {
    const auto idText = jsonString(object, "id");
    const auto id = idText ? Uuid::parse(*idText) : std::nullopt;
    auto bundleID = jsonString(object, "bundleID");
    auto title = jsonString(object, "title");
    const auto original = jsonRect(object, "original");
    const auto snapped = jsonRect(object, "snapped");
    if (!id || !bundleID || !title || !original || !snapped || !isFinite(*original) ||
        !isFinite(*snapped)) {
        return std::nullopt;
    }
    return Memory{*id, std::move(*bundleID), std::move(*title), *original, *snapped};
}

}  // namespace

std::optional<std::vector<std::uint8_t>> encodeMemories(std::span<const Memory> records) {
    JsonWriter json;
    json.beginArray();
    for (const auto& record : records) {
        json.beginObject();
        json.key("id").string(record.id.toString());
        json.key("bundleID").string(record.bundleID);
        json.key("title").string(record.title);
        json.key("original").rect(record.original);
        json.key("snapped").rect(record.snapped);
        json.endObject();
    }
    json.endArray();
    return std::move(json).finish();
}

std::optional<std::vector<Memory>> decodeMemories(std::span<const std::uint8_t> json) {
    const auto document = parseJson(json);
    if (!document || !document->is_array()) {
        return std::nullopt;
    }
    std::vector<Memory> records;
    std::unordered_set<Uuid> known;
    for (const auto& element : *document) {
        auto record = decodeMemory(element);
        if (!record) {
            return std::nullopt;
        }
        if (known.insert(record->id).second) {
            records.push_back(std::move(*record));
        }
    }
    return records;
}

}  // namespace tessellon
