// What the tests of feed sources share: a fetch that is waited for.
#pragma once

#include "linux/temporary_folder.h"
#include "platform/feed_source.h"
#include "qt/event_loop.h"
#include "ui/ui_fixture.h"

#include <optional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace tessellon {

class FeedSourceTest : public testing::Test {
  protected:
    FeedSourceTest() { testApplication(); }

    /// The one result of a fetch, which comes later than the call returns.
    static FeedResult resultOf(FeedSource& source, const std::string& address) {
        std::optional<FeedResult> result;
        const auto token = source.fetch(address, [&](FeedResult got) {
            EXPECT_FALSE(result) << "a second result";
            result = std::move(got);
        });
        EXPECT_FALSE(result) << "the result comes later";
        EXPECT_TRUE(waitFor([&] { return result.has_value(); })) << address;
        return result.value_or(FeedResult());
    }

    static std::optional<FeedError> errorOf(const FeedResult& result) {
        const auto* const failure = std::get_if<FeedFailure>(&result);
        return failure != nullptr ? std::optional(failure->error) : std::nullopt;
    }

    TemporaryFolder temporary;
};

}  // namespace tessellon
