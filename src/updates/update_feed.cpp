#include "updates/update_feed.h"

#include "base/json.h"
#include "base/text.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace tessellon {
namespace {

constexpr std::size_t longestPage = 2048;
/// In bytes; far more than anybody reads in a window.
constexpr std::size_t longestNotes = 8192;

constexpr std::string_view webScheme = "https://";
constexpr std::string_view fileScheme = "file:///";

/// True for what an address may consist of; a browser would have to guess at the rest (RFC 3986).
bool isAddressCharacter(char c) {
    constexpr std::string_view unsafe = "\"<>\\^`{|}";
    return c > ' ' && c < 0x7F && unsafe.find(c) == std::string_view::npos;
}

/// An address of the web names a host, and nothing before it that could be mistaken for one.
bool isWebAddress(std::string_view page) {
    if (!page.starts_with(webScheme)) {
        return false;
    }
    page.remove_prefix(webScheme.size());
    const auto authority = page.substr(0, page.find_first_of("/?#"));
    return !authority.empty() && authority.front() != ':' &&
           authority.find('@') == std::string_view::npos;
}

bool isPage(std::string_view page, std::string_view feed) {
    const bool mayBeFile = feed.starts_with("file:");
    return page.size() <= longestPage && std::ranges::all_of(page, isAddressCharacter) &&
           (isWebAddress(page) ||
            (mayBeFile && page.starts_with(fileScheme) && page.size() > fileScheme.size()));
}

/// Paragraphs keep their distance, but a page of nothing is no note.
std::string withoutWideGaps(std::string_view text) {
    constexpr int mostBreaks = 2;
    std::string result;
    int breaks = 0;
    for (const char c : text) {
        breaks = c == '\n' ? breaks + 1 : 0;
        if (breaks <= mostBreaks) {
            result += c;
        }
    }
    return result;
}

std::string cleanNotes(std::string_view text) {
    auto notes = withoutWideGaps(trimWhitespace(plainText(text)));
    if (notes.size() > longestNotes) {
        constexpr std::string_view ellipsis = "…";
        auto end = longestNotes - ellipsis.size();
        while ((static_cast<unsigned char>(notes[end]) & 0xC0U) == 0x80U) {
            --end;
        }
        notes.resize(end);
        notes += ellipsis;
    }
    return notes;
}

}  // namespace

std::string Version::text() const {
    std::string result;
    for (std::size_t i = 0; i < count_; ++i) {
        result += (i > 0 ? "." : "") + std::to_string(parts_[i]);
    }
    return result;
}

std::optional<Update> parseUpdateFeed(std::span<const std::uint8_t> bytes,
                                      std::string_view address) {
    if (bytes.size() > largestFeed) {
        return std::nullopt;
    }
    const auto feed = parseJson(bytes);
    if (!feed) {
        return std::nullopt;
    }
    const auto versionText = jsonString(*feed, "version");
    auto page = jsonString(*feed, "page");
    if (!versionText || !page || !isPage(*page, address)) {
        return std::nullopt;
    }
    const auto version = Version::parse(*versionText);
    const auto notes = jsonString(*feed, "notes");
    if (!version || (feed->contains("notes") && !notes)) {
        return std::nullopt;
    }
    return Update{*version, std::move(*page), notes ? cleanNotes(*notes) : std::string()};
}

}  // namespace tessellon
