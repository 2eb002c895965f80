#include "platform/user_defaults.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>
#include <utility>

namespace tessellon {
namespace {

/// The number a text begins with, 0 when it begins with none, infinite when it is too large.
double leadingNumber(std::string_view text) {
    text = trimWhitespace(text);
    if (text.starts_with('+')) {
        text.remove_prefix(1);
    }
    double value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc::result_out_of_range ? std::numeric_limits<double>::infinity()
                                                       : value;
}

bool isWordForYes(std::string_view text) {
    std::string lower(trimWhitespace(text));
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return c >= 'A' && c <= 'Z' ? c + 32 : c; });
    return lower == "yes" || lower == "true" || lower == "y" || lower == "t";
}

std::optional<double> asDouble(const PropertyValue& value) {
    if (const auto number = value.number()) {
        return number;
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        return leadingNumber(*text);
    }
    return std::nullopt;
}

std::string numberText(double value) {
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
    return {buffer.data(), end};
}

}  // namespace

std::optional<double> PropertyValue::number() const {
    if (const auto* flag = std::get_if<bool>(this)) {
        return *flag ? 1 : 0;
    }
    if (const auto* integer = std::get_if<std::int64_t>(this)) {
        return static_cast<double>(*integer);
    }
    if (const auto* real = std::get_if<double>(this)) {
        return *real;
    }
    return std::nullopt;
}

void UserDefaults::registerDefaults(const PropertyDictionary& defaults) {
    for (const auto& [key, value] : defaults) {
        registered_.insert_or_assign(key, value);
    }
}

std::optional<PropertyValue> UserDefaults::objectForKey(std::string_view key) const {
    if (const auto* value = stored(key)) {
        return *value;
    }
    if (const auto found = registered_.find(key); found != registered_.end()) {
        return found->second;
    }
    return std::nullopt;
}

bool UserDefaults::boolForKey(std::string_view key) const {
    if (const auto* value = stored(key)) {
        const auto* text = std::get_if<std::string>(value);
        if (text != nullptr && isWordForYes(*text)) {
            return true;
        }
    }
    return doubleForKey(key) != 0;
}

double UserDefaults::doubleForKey(std::string_view key) const {
    const auto* value = stored(key);
    const auto number = value != nullptr ? asDouble(*value) : std::nullopt;
    if (number && std::isfinite(*number)) {
        return *number;
    }
    if (value != nullptr && !number) {
        return 0;  // data, an array or a dictionary
    }
    const auto found = registered_.find(key);
    return found != registered_.end() ? asDouble(found->second).value_or(0) : 0;
}

std::optional<std::string> UserDefaults::stringForKey(std::string_view key) const {
    const auto value = objectForKey(key);
    if (!value) {
        return std::nullopt;
    }
    if (const auto* text = std::get_if<std::string>(&*value)) {
        return *text;
    }
    if (const auto* integer = std::get_if<std::int64_t>(&*value)) {
        return std::to_string(*integer);
    }
    if (const auto number = value->number()) {
        return numberText(*number);
    }
    return std::nullopt;
}

std::optional<PropertyData> UserDefaults::dataForKey(std::string_view key) const {
    auto value = objectForKey(key);
    if (!value || !std::holds_alternative<PropertyData>(*value)) {
        return std::nullopt;
    }
    return std::get<PropertyData>(std::move(*value));
}

std::optional<PropertyDictionary> UserDefaults::dictionaryForKey(std::string_view key) const {
    auto value = objectForKey(key);
    if (!value || !std::holds_alternative<PropertyDictionary>(*value)) {
        return std::nullopt;
    }
    return std::get<PropertyDictionary>(std::move(*value));
}

void UserDefaults::setObject(std::string_view key, PropertyValue value) {
    if (const auto* old = stored(key); old != nullptr && *old == value) {
        return;
    }
    store(key, std::move(value));
    changed_.emit(key);
}

void UserDefaults::removeObject(std::string_view key) {
    if (stored(key) == nullptr) {
        return;
    }
    store(key, std::nullopt);
    changed_.emit(key);
}

}  // namespace tessellon
