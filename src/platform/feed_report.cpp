#include "platform/feed_report.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <utility>

namespace tessellon {
namespace {

// Names instead of numbers: right after an upgrade the two processes are of different versions.
constexpr std::array<std::pair<FeedError, std::string_view>, 12> names{{
    {FeedError::addressNotAllowed, "address-not-allowed"},
    {FeedError::unreachable, "unreachable"},
    {FeedError::timedOut, "timed-out"},
    {FeedError::notTrusted, "not-trusted"},
    {FeedError::insecureRedirect, "insecure-redirect"},
    {FeedError::tooManyRedirects, "too-many-redirects"},
    {FeedError::httpStatus, "http-status"},
    {FeedError::tooLarge, "too-large"},
    {FeedError::noSuchFile, "no-such-file"},
    {FeedError::notAFile, "not-a-file"},
    {FeedError::fileNotReadable, "file-not-readable"},
    {FeedError::fetcherFailed, "fetcher-failed"},
}};

constexpr std::string_view document = "document";

std::string_view nameOf(FeedError error) {
    const auto* const found = std::find_if(
        names.begin(), names.end(), [error](const auto& each) { return each.first == error; });
    return found->second;
}

}  // namespace

std::string feedReport(const FeedResult& result) {
    std::string report;
    const auto head = [&report](std::string_view name, std::size_t number) {
        report.append(name).append(" ").append(std::to_string(number)).append("\n");
    };
    if (const auto* const failure = std::get_if<FeedFailure>(&result)) {
        head(nameOf(failure->error), static_cast<std::size_t>(std::max(0, failure->httpStatus)));
    } else {
        const auto& bytes = std::get<std::vector<std::uint8_t>>(result);
        head(document, bytes.size());
        report.append(bytes.begin(), bytes.end());
    }
    return report;
}

std::optional<FeedResult> parseFeedReport(std::span<const std::uint8_t> bytes) {
    const auto head = bytes.first(std::min(bytes.size(), longestFeedReportHead));
    const auto end = std::find(head.begin(), head.end(), '\n');
    const std::string line(head.begin(), end);
    const auto space = line.find(' ');
    if (end == head.end() || space == std::string::npos) {
        return std::nullopt;
    }
    const auto name = std::string_view(line).substr(0, space);
    std::uint32_t number = 0;
    const char* const lineEnd = line.data() + line.size();
    const auto [read, error] = std::from_chars(line.data() + space + 1, lineEnd, number);
    if (error != std::errc() || read != lineEnd) {
        return std::nullopt;
    }
    const auto rest = bytes.subspan(line.size() + 1);
    if (name == document) {
        return rest.size() == number
                   ? std::optional<FeedResult>(std::vector<std::uint8_t>(rest.begin(), rest.end()))
                   : std::nullopt;
    }
    const auto* const found = std::find_if(
        names.begin(), names.end(), [name](const auto& each) { return each.second == name; });
    // RFC 9110: a status has three digits.
    if (found == names.end() || !rest.empty() || number > 999) {
        return std::nullopt;
    }
    return FeedFailure{found->first, static_cast<int>(number)};
}

}  // namespace tessellon
