// What the process that fetches an update feed hands to the program: a line that names the result,
// then the document.
#pragma once

#include "platform/feed_source.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tessellon {

/// No first line is longer, in bytes.
inline constexpr std::size_t longestFeedReportHead = 64;

/// The report of a fetch.
std::string feedReport(const FeedResult& result);

/// Nothing when the bytes are no whole report.
std::optional<FeedResult> parseFeedReport(std::span<const std::uint8_t> bytes);

}  // namespace tessellon
