// What an update feed says: the newest version, the page that offers it, and what is new. The feed
// comes from outside, so nothing in it is taken on trust; its format is described in
// docs/updates.md.
#pragma once

#include <algorithm>
#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tessellon {

/// A version of the program: dotted numbers, of which those that are left out count as 0.
class Version {
  public:
    static constexpr std::size_t mostParts = 4;
    static constexpr std::size_t mostDigits = 9;

    /// Nothing unless the text is one to four numbers of at most nine digits, with dots between.
    static constexpr std::optional<Version> parse(std::string_view text) {
        Version version;
        for (;;) {
            const auto digits = std::min(text.find('.'), text.size());
            if (version.count_ == mostParts || digits == 0 || digits > mostDigits) {
                return std::nullopt;
            }
            auto& part = version.parts_[version.count_++];
            for (const char c : text.substr(0, digits)) {
                if (c < '0' || c > '9') {
                    return std::nullopt;
                }
                part = part * 10 + static_cast<std::uint32_t>(c - '0');
            }
            if (digits == text.size()) {
                return version;
            }
            text.remove_prefix(digits + 1);
        }
    }

    /// As many parts as were given.
    std::string text() const;

    friend constexpr std::strong_ordering operator<=>(const Version& a, const Version& b) {
        return a.parts_ <=> b.parts_;
    }
    friend constexpr bool operator==(const Version& a, const Version& b) {
        return a.parts_ == b.parts_;
    }

  private:
    std::array<std::uint32_t, mostParts> parts_{};
    std::size_t count_ = 0;
};

/// One version that a feed offers.
struct Update {
    Version version;
    /// An address for the user's browser.
    std::string page;
    /// Plain text without control characters; may be empty.
    std::string notes;
    bool operator==(const Update&) const = default;
};

/// The largest feed, in bytes.
inline constexpr std::size_t largestFeed = 65536;

/// Reads the feed that was fetched from `address`. A page has to be on the web, by https; only a
/// feed that is a file of this machine may name another one. Nothing when a member is missing, of
/// another type or against a limit.
std::optional<Update> parseUpdateFeed(std::span<const std::uint8_t> bytes,
                                      std::string_view address);

}  // namespace tessellon
