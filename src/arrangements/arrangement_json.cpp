#include "arrangements/arrangement_json.h"

#include "base/json.h"

#include <nlohmann/json.hpp>
#include <utility>

namespace tessellon {
namespace {

void writePlacement(JsonWriter& writer, const Arrangement::Placement& placement) {
    writer.beginObject();
    writer.key("bundleID").string(placement.bundleID);
    writer.key("title").string(placement.title);
    writer.key("screen").integer(placement.screen);
    writer.key("unit").rect(placement.unit);
    writer.endObject();
}

void writeArrangement(JsonWriter& writer, const Arrangement& arrangement) {
    writer.beginObject();
    writer.key("id").string(arrangement.id.toString());
    writer.key("name").string(arrangement.name);
    writer.key("placements").beginArray();
    for (const auto& placement : arrangement.placements) {
        writePlacement(writer, placement);
    }
    writer.endArray();
    if (arrangement.combo) {
        writer.key("combo");
        writeKeyCombo(writer, *arrangement.combo);
    }
    writer.endObject();
}

std::optional<Arrangement::Placement> readPlacement(const Json& value) {
    auto bundleID = jsonString(value, "bundleID");
    auto title = jsonString(value, "title");
    const auto screen = jsonInteger(value, "screen");
    const auto unit = jsonRect(value, "unit");
    if (!bundleID || !title || !screen || !unit) {
        return std::nullopt;
    }
    return Arrangement::Placement{*std::move(bundleID), *std::move(title), *screen, *unit};
}

std::optional<Arrangement> readArrangement(const Json& value) {
    const auto idText = jsonString(value, "id");
    const auto id = idText ? Uuid::parse(*idText) : std::nullopt;
    auto name = jsonString(value, "name");
    if (!id || !name) {
        return std::nullopt;
    }
    Arrangement arrangement{*id, *std::move(name), {}, std::nullopt};

    const auto placements = value.find("placements");
    if (placements == value.end() || !placements->is_array()) {
        return std::nullopt;
    }
    arrangement.placements.reserve(placements->size());
    for (const auto& element : *placements) {
        auto placement = readPlacement(element);
        if (!placement) {
            return std::nullopt;
        }
        arrangement.placements.push_back(*std::move(placement));
    }

    if (const auto combo = value.find("combo"); combo != value.end() && !combo->is_null()) {
        arrangement.combo = keyComboFromJson(*combo);
        if (!arrangement.combo) {
            return std::nullopt;
        }
    }
    return arrangement;
}

}  // namespace

std::optional<std::vector<std::uint8_t>> encodeArrangements(
    std::span<const Arrangement> arrangements) {
    JsonWriter writer;
    writer.beginArray();
    for (const auto& arrangement : arrangements) {
        writeArrangement(writer, arrangement);
    }
    writer.endArray();
    return std::move(writer).finish();
}

std::optional<std::vector<Arrangement>> decodeArrangements(std::span<const std::uint8_t> json) {
    const auto document = parseJson(json);
    if (!document || !document->is_array()) {
        return std::nullopt;
    }
    std::vector<Arrangement> arrangements;
    arrangements.reserve(document->size());
    for (const auto& element : *document) {
        auto arrangement = readArrangement(element);
        if (!arrangement) {
            return std::nullopt;
        }
        arrangements.push_back(*std::move(arrangement));
    }
    return arrangements;
}

}  // namespace tessellon
