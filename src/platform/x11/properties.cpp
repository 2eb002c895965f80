#include "platform/x11/properties.h"

#include "base/text.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <string_view>

namespace tessellon::x11 {
namespace {

constexpr std::int32_t largestEdge = 4096;   // wider edges than this are nonsense
constexpr std::int32_t largestSize = 32767;  // of an X window

std::string latin1ToUtf8(std::span<const std::uint8_t> bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (const std::uint8_t byte : bytes) {
        if (byte < 0x80) {
            out += static_cast<char>(byte);
        } else {
            out += static_cast<char>(0xc0 | (byte >> 6));
            out += static_cast<char>(0x80 | (byte & 0x3f));
        }
    }
    return out;
}

std::span<const std::uint8_t> untilNul(std::span<const std::uint8_t> bytes) {
    const auto nul = std::find(bytes.begin(), bytes.end(), 0);
    return bytes.first(static_cast<std::size_t>(nul - bytes.begin()));
}

std::string_view asText(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::int32_t clampedSize(std::uint32_t value, std::int32_t least) {
    return std::clamp(static_cast<std::int32_t>(value), least, largestSize);
}

}  // namespace

RawProperty rawProperty(const xcb_get_property_reply_t* reply) {
    if (reply == nullptr || reply->type == XCB_ATOM_NONE) {
        return {};
    }
    const auto length = xcb_get_property_value_length(reply);
    const auto* data = static_cast<const std::uint8_t*>(xcb_get_property_value(reply));
    return {reply->type, reply->format, {data, static_cast<std::size_t>(std::max(length, 0))}};
}

std::vector<std::uint32_t> cardinals(const RawProperty& property) {
    if (property.format != 32) {
        return {};
    }
    std::vector<std::uint32_t> values(property.bytes.size() / sizeof(std::uint32_t));
    if (!values.empty()) {
        std::memcpy(values.data(), property.bytes.data(), values.size() * sizeof(std::uint32_t));
    }
    return values;
}

std::optional<std::uint32_t> firstCardinal(const RawProperty& property) {
    const auto values = cardinals(property);
    if (values.empty()) {
        return std::nullopt;
    }
    return values.front();
}

std::optional<Extents> extents(const RawProperty& property) {
    const auto values = cardinals(property);
    if (values.size() < 4 || std::any_of(values.begin(), values.begin() + 4,
                                         [](std::uint32_t v) { return v > largestEdge; })) {
        return std::nullopt;
    }
    const auto edge = [&](std::size_t i) { return static_cast<std::int32_t>(values[i]); };
    return Extents{edge(0), edge(1), edge(2), edge(3)};
}

std::string text(const RawProperty& property) {
    if (property.format != 8) {
        return {};
    }
    const auto bytes = untilNul(property.bytes);
    if (property.type == XCB_ATOM_STRING && !isValidUtf8(asText(bytes))) {
        return latin1ToUtf8(bytes);
    }
    return sanitizedUtf8(asText(bytes));
}

WindowClass windowClass(const RawProperty& property) {
    if (property.format != 8) {
        return {};
    }
    const auto instance = untilNul(property.bytes);
    const auto rest = property.bytes.subspan(std::min(instance.size() + 1, property.bytes.size()));
    return {sanitizedUtf8(asText(instance)), sanitizedUtf8(asText(untilNul(rest)))};
}

std::optional<Strut> strut(const RawProperty& partial, const RawProperty& plain) {
    constexpr std::int64_t everywhere = std::numeric_limits<std::int32_t>::max();
    Strut result;
    if (const auto values = cardinals(partial); values.size() >= 12) {
        result = {values[0], values[1], values[2], values[3], values[4],  values[5],
                  values[6], values[7], values[8], values[9], values[10], values[11]};
    } else if (const auto edges = cardinals(plain); edges.size() >= 4) {
        result = {edges[0], edges[1],   edges[2], edges[3],   0, everywhere,
                  0,        everywhere, 0,        everywhere, 0, everywhere};
    }
    if (result.left == 0 && result.right == 0 && result.top == 0 && result.bottom == 0) {
        return std::nullopt;
    }
    return result;
}

SizeHints sizeHints(const RawProperty& property) {
    constexpr std::uint32_t hasMinimum = 1U << 4;
    constexpr std::uint32_t hasIncrements = 1U << 6;
    SizeHints hints;
    const auto values = cardinals(property);
    if (values.size() < 11) {
        return hints;
    }
    if ((values[0] & hasMinimum) != 0) {
        hints.minWidth = clampedSize(values[5], 0);
        hints.minHeight = clampedSize(values[6], 0);
    }
    if ((values[0] & hasIncrements) != 0) {
        hints.widthIncrement = clampedSize(values[9], 1);
        hints.heightIncrement = clampedSize(values[10], 1);
    }
    return hints;
}

}  // namespace tessellon::x11
