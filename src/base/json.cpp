#include "base/json.h"

#include "base/text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <nlohmann/json.hpp>
#include <utility>

namespace tessellon {
namespace {

/// More than anything stored needs, and too little for hostile nesting to cost stack or memory.
constexpr int maximumDepth = 32;

/// False when brackets nest too deeply, or for a NUL byte: the reader would take one for the end of
/// the text.
bool isWorthReading(std::span<const std::uint8_t> bytes) {
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        switch (bytes[i]) {
            case '\0':
                return false;
            case '"':
                inString = !inString;
                break;
            case '\\':
                i += inString ? 1 : 0;
                break;
            case '[':
            case '{':
                depth += inString ? 0 : 1;
                break;
            case ']':
            case '}':
                depth -= inString ? 0 : 1;
                break;
            default:
                break;
        }
        if (depth > maximumDepth) {
            return false;
        }
    }
    return true;
}

const Json* member(const Json& object, std::string_view key) {
    if (!object.is_object()) {
        return nullptr;
    }
    const auto found = object.find(key);
    return found != object.end() ? &*found : nullptr;
}

/// 2 to the number of value bits of Integer: the first whole number past its range.
template <typename Integer>
constexpr double upperBound() {
    return 2.0 * static_cast<double>(Integer{1} << (std::numeric_limits<Integer>::digits - 1));
}

template <typename Integer>
std::optional<Integer> wholeNumber(double value) {
    if (std::trunc(value) != value || value >= upperBound<Integer>() ||
        value < static_cast<double>(std::numeric_limits<Integer>::min())) {
        return std::nullopt;
    }
    return static_cast<Integer>(value);
}

template <typename Integer>
std::optional<Integer> integerMember(const Json& object, std::string_view key) {
    const auto* value = member(object, key);
    if (value == nullptr || !value->is_number()) {
        return std::nullopt;
    }
    if (value->is_number_float()) {
        return wholeNumber<Integer>(value->get<double>());
    }
    if (value->is_number_unsigned()) {
        const auto number = value->get<std::uint64_t>();
        return std::in_range<Integer>(number) ? std::optional(static_cast<Integer>(number))
                                              : std::nullopt;
    }
    const auto number = value->get<std::int64_t>();
    return std::in_range<Integer>(number) ? std::optional(static_cast<Integer>(number))
                                          : std::nullopt;
}

struct NumberPair {
    double first = 0;
    double second = 0;
};

std::optional<NumberPair> numberPair(const Json& value) {
    if (!value.is_array() || value.size() != 2 || !value[0].is_number() || !value[1].is_number()) {
        return std::nullopt;
    }
    return NumberPair{value[0].get<double>(), value[1].get<double>()};
}

template <typename Integer>
void appendInteger(std::string& out, Integer value) {
    std::array<char, 24> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    out.append(buffer.data(), end);
}

void appendEscaped(std::string& out, std::string_view utf8) {
    constexpr std::string_view hexadecimal = "0123456789abcdef";
    out += '"';
    for (const char c : utf8) {
        switch (c) {
            case '"':
            case '\\':
            case '/':
                out += '\\';
                out += c;
                break;
            case '\b':
                out += "\\b";
                break;
            case '\f':
                out += "\\f";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                if (const auto byte = static_cast<unsigned char>(c); byte < 0x20) {
                    out += "\\u00";
                    out += hexadecimal[byte >> 4U];
                    out += hexadecimal[byte & 0xFU];
                } else {
                    out += c;
                }
        }
    }
    out += '"';
}

}  // namespace

std::optional<Json> parseJson(std::span<const std::uint8_t> bytes) {
    if (!isWorthReading(bytes)) {
        return std::nullopt;
    }
    auto document = Json::parse(bytes.begin(), bytes.end(), nullptr, /*allow_exceptions=*/false);
    if (document.is_discarded()) {
        return std::nullopt;
    }
    return document;
}

std::optional<std::string> jsonString(const Json& object, std::string_view key) {
    const auto* value = member(object, key);
    if (value == nullptr || !value->is_string()) {
        return std::nullopt;
    }
    return value->get<std::string>();
}

std::optional<std::int64_t> jsonInteger(const Json& object, std::string_view key) {
    return integerMember<std::int64_t>(object, key);
}

std::optional<std::uint64_t> jsonUnsigned(const Json& object, std::string_view key) {
    return integerMember<std::uint64_t>(object, key);
}

std::optional<Rect> jsonRect(const Json& object, std::string_view key) {
    const auto* value = member(object, key);
    if (value == nullptr || !value->is_array() || value->size() != 2) {
        return std::nullopt;
    }
    const auto origin = numberPair((*value)[0]);
    const auto size = numberPair((*value)[1]);
    if (!origin || !size) {
        return std::nullopt;
    }
    return Rect{origin->first, origin->second, size->first, size->second};
}

void JsonWriter::separate() {
    if (needsComma_) {
        out_ += ',';
    }
    needsComma_ = true;
}

JsonWriter& JsonWriter::beginObject() {
    separate();
    out_ += '{';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::endObject() {
    out_ += '}';
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::beginArray() {
    separate();
    out_ += '[';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::endArray() {
    out_ += ']';
    needsComma_ = true;
    return *this;
}

JsonWriter& JsonWriter::key(std::string_view name) {
    string(name);
    out_ += ':';
    needsComma_ = false;
    return *this;
}

JsonWriter& JsonWriter::string(std::string_view utf8) {
    separate();
    failed_ = failed_ || !isValidUtf8(utf8);
    appendEscaped(out_, utf8);
    return *this;
}

JsonWriter& JsonWriter::integer(std::int64_t value) {
    separate();
    appendInteger(out_, value);
    return *this;
}

JsonWriter& JsonWriter::unsignedInteger(std::uint64_t value) {
    separate();
    appendInteger(out_, value);
    return *this;
}

JsonWriter& JsonWriter::number(double value) {
    separate();
    failed_ = failed_ || !std::isfinite(value);
    // Everyday numbers are written without an exponent, up to where doubles leave out whole
    // numbers. Zero has no sign, since readers take a "-0" for a whole number and drop it.
    const double magnitude = std::abs(value);
    const bool plain = magnitude == 0 || (magnitude >= 0x1p-13 && magnitude < 0x1p54);
    std::array<char, 64> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(),
                                   magnitude == 0 ? magnitude : value,
                                   plain ? std::chars_format::fixed : std::chars_format::scientific)
                         .ptr;
    out_.append(buffer.data(), end);
    return *this;
}

JsonWriter& JsonWriter::rect(const Rect& value) {
    beginArray();
    beginArray().number(value.x).number(value.y).endArray();
    beginArray().number(value.width).number(value.height).endArray();
    return endArray();
}

std::optional<std::vector<std::uint8_t>> JsonWriter::finish() && {
    if (failed_) {
        return std::nullopt;
    }
    return std::vector<std::uint8_t>(out_.begin(), out_.end());
}

}  // namespace tessellon
