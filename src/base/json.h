// JSON as the stored settings need it: strict reading, and a writer whose output is exact to the
// byte, because other versions of the program read what this one stored.
#pragma once

#include "base/geometry.h"

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

using Json = nlohmann::json;

/// Reads one JSON document of UTF-8 text. Nothing when it is not exactly one valid document, or is
/// nested deeper than any of ours could be. Of a key that occurs twice the last value counts.
std::optional<Json> parseJson(std::span<const std::uint8_t> bytes);

/// Required members of an object: nothing when `object` is no object, has no such member, or the
/// member is of another type. A whole number counts as an integer however it is written.
std::optional<std::string> jsonString(const Json& object, std::string_view key);
std::optional<std::int64_t> jsonInteger(const Json& object, std::string_view key);
std::optional<std::uint64_t> jsonUnsigned(const Json& object, std::string_view key);

/// A rectangle in the form [[x, y], [width, height]].
std::optional<Rect> jsonRect(const Json& object, std::string_view key);

/// Writes compact JSON: no white space, members in the order they are written, "\/" for the slash,
/// numbers in their shortest form that reads back the same.
class JsonWriter {
  public:
    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    JsonWriter& key(std::string_view name);
    JsonWriter& string(std::string_view utf8);
    JsonWriter& integer(std::int64_t value);
    JsonWriter& unsignedInteger(std::uint64_t value);
    JsonWriter& number(double value);
    /// [[x, y], [width, height]]
    JsonWriter& rect(const Rect& value);

    /// The document; nothing when a number was not finite or a text was not valid UTF-8, since
    /// JSON has no way to write those.
    std::optional<std::vector<std::uint8_t>> finish() &&;

  private:
    void separate();
    std::string out_;
    bool needsComma_ = false;
    bool failed_ = false;
};

}  // namespace tessellon
