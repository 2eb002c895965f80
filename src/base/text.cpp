#include "base/text.h"

#include <array>
#include <cstdlib>
#include <memory>
#include <optional>

#include <utf8proc.h>

namespace tessellon {
namespace {

struct Character {
    utf8proc_int32_t code = 0;
    std::size_t length = 0;
};

/// The character that the text begins with; nothing when its first bytes are not valid UTF-8.
std::optional<Character> firstCharacter(std::string_view text) {
    Character result;
    if (!text.empty() && static_cast<unsigned char>(text.front()) < 0x80) {
        // Nearly every character, and several times faster than asking.
        return Character{text.front(), 1};
    }
    const auto length = utf8proc_iterate(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                                         static_cast<utf8proc_ssize_t>(text.size()), &result.code);
    if (length <= 0) {
        return std::nullopt;
    }
    result.length = static_cast<std::size_t>(length);
    return result;
}

bool isContinuation(char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
}

/// The White_Space property of Unicode.
bool isWhitespace(utf8proc_int32_t code) {
    return (code >= 0x09 && code <= 0x0D) || code == 0x20 || code == 0x85 || code == 0xA0 ||
           code == 0x1680 || (code >= 0x2000 && code <= 0x200A) || code == 0x2028 ||
           code == 0x2029 || code == 0x202F || code == 0x205F || code == 0x3000;
}

bool isLineBreak(utf8proc_int32_t code) {
    return (code >= 0x0A && code <= 0x0D) || code == 0x85 || code == 0x2028 || code == 0x2029;
}

/// False for what shows nothing by itself or changes how its neighbors show.
bool isVisible(utf8proc_int32_t code) {
    constexpr utf8proc_int32_t nonJoiner = 0x200C;
    constexpr utf8proc_int32_t joiner = 0x200D;
    switch (utf8proc_category(code)) {
        case UTF8PROC_CATEGORY_CF:
            return code == nonJoiner || code == joiner;
        case UTF8PROC_CATEGORY_CC:
        case UTF8PROC_CATEGORY_CN:
        case UTF8PROC_CATEGORY_CO:
        case UTF8PROC_CATEGORY_CS:
            return false;
        default:
            return true;
    }
}

template <typename Mapping>
std::string mapCharacters(std::string_view text, Mapping mapping) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const auto character = firstCharacter(text);
        if (!character) {
            result += text.front();
            text.remove_prefix(1);
            continue;
        }
        std::array<utf8proc_uint8_t, 4> encoded{};
        const auto length = utf8proc_encode_char(mapping(character->code), encoded.data());
        result.append(encoded.begin(), encoded.begin() + length);
        text.remove_prefix(character->length);
    }
    return result;
}

}  // namespace

std::string toNfc(std::string_view text) {
    utf8proc_uint8_t* mapped = nullptr;
    const auto length =
        utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()),
                     static_cast<utf8proc_ssize_t>(text.size()), &mapped,
                     static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
    const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(mapped, &std::free);
    if (length < 0) {
        return std::string(text);
    }
    return {mapped, mapped + length};
}

bool equivalent(std::string_view a, std::string_view b) {
    return a == b || toNfc(a) == toNfc(b);
}

std::string toUpper(std::string_view text) {
    return mapCharacters(text, [](utf8proc_int32_t code) {
        // The library has a capital sharp s, which the mappings of Unicode do not lead to.
        return code == 0xDF ? code : utf8proc_toupper(code);
    });
}

std::string toLower(std::string_view text) {
    return mapCharacters(text, utf8proc_tolower);
}

std::string_view trimWhitespace(std::string_view text) {
    std::size_t begin = text.size();
    std::size_t end = text.size();
    for (std::size_t i = 0; i < text.size();) {
        const auto character = firstCharacter(text.substr(i));
        const auto next = i + (character ? character->length : 1);
        if (!character || !isWhitespace(character->code)) {
            begin = begin == text.size() ? i : begin;
            end = next;
        }
        i = next;
    }
    return text.substr(begin, end - begin);
}

std::string_view trimHorizontalWhitespace(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string plainText(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const auto character = firstCharacter(text);
        const auto length = character ? character->length : 1;
        if (character && isLineBreak(character->code)) {
            result += '\n';
            text.remove_prefix(text.starts_with("\r\n") ? 2 : length);
            continue;
        }
        if (text.front() == '\t') {
            result += ' ';
        } else if (character && isVisible(character->code)) {
            result += text.substr(0, length);
        }
        text.remove_prefix(length);
    }
    return result;
}

bool isValidUtf8(std::string_view text) {
    while (!text.empty()) {
        const auto character = firstCharacter(text);
        if (!character) {
            return false;
        }
        text.remove_prefix(character->length);
    }
    return true;
}

std::string sanitizedUtf8(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    while (!bytes.empty()) {
        if (const auto character = firstCharacter(bytes)) {
            result += bytes.substr(0, character->length);
            bytes.remove_prefix(character->length);
            continue;
        }
        result += "\xEF\xBF\xBD";
        do {
            bytes.remove_prefix(1);
        } while (!bytes.empty() && isContinuation(bytes.front()));
    }
    return result;
}

}  // namespace tessellon
