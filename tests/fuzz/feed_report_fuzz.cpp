// Any bytes as the report of the process that fetches update feeds, which may be of another version
// or broken.
#include "fuzz/round_trip.h"
#include "platform/feed_report.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

namespace {

using namespace tessellon;

std::optional<FeedResult> decode(std::span<const std::uint8_t> bytes) {
    return parseFeedReport(bytes);
}

std::optional<std::vector<std::uint8_t>> encode(const FeedResult& result) {
    const auto report = feedReport(result);
    return std::vector<std::uint8_t>(report.begin(), report.end());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span bytes(data, size);
    expectRoundTrip(bytes, decode, encode);
    const auto result = decode(bytes);
    if (!result) {
        return 0;
    }
    if (const auto* const failure = std::get_if<FeedFailure>(&*result)) {
        expect(failure->httpStatus >= 0 && failure->httpStatus <= 999);
    } else {
        // A report that is cut off anywhere, or goes on, is none.
        const auto head = size - std::get<std::vector<std::uint8_t>>(*result).size();
        expect(head > 0 && head <= longestFeedReportHead && data[head - 1] == '\n');
    }
    expect(!decode(bytes.first(size - 1)));
    std::vector<std::uint8_t> longer(bytes.begin(), bytes.end());
    longer.push_back('0');
    expect(!decode(longer));
    return 0;
}
