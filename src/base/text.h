// Unicode text helpers. All text is UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace tessellon {

/// The text in normalisation form C (Unicode Standard Annex 15); unchanged when it is not valid
/// UTF-8.
std::string toNfc(std::string_view text);

/// True when two texts are canonically equivalent.
bool equivalent(std::string_view a, std::string_view b);

/// Upper and lower case by the simple, locale-independent mappings of Unicode.
std::string toUpper(std::string_view text);
std::string toLower(std::string_view text);

/// The text without white space and line breaks (any Unicode white space) at both ends.
std::string_view trimWhitespace(std::string_view text);

/// The text without spaces and tabs at both ends, line breaks kept.
std::string_view trimHorizontalWhitespace(std::string_view text);

/// The text without characters that do not show by themselves: controls, formatting (such as
/// turning the direction of writing; the joiners of letters stay), private and unassigned ones, and
/// bytes that are not valid UTF-8. Every kind of line break becomes "\n", a tab becomes a space.
std::string plainText(std::string_view text);

/// True when the bytes are valid UTF-8.
bool isValidUtf8(std::string_view text);

/// The text with every byte sequence that is not valid UTF-8 replaced by U+FFFD.
std::string sanitizedUtf8(std::string_view bytes);

}  // namespace tessellon
