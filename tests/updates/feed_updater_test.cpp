#include "updates/feed_updater.h"

#include "app/preferences.h"
#include "fake_update_views.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_feed_source.h"
#include "platform/memory/memory_user_defaults.h"

#include <limits>
#include <memory>
#include <set>
#include <string>
#include <variant>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

constexpr const char* address = "https://example.org/feed.json";
constexpr Seconds minute{60};
constexpr Seconds hour{3600};
constexpr Seconds day{24.0 * 3600};

std::string feedWith(const std::string& version) {
    return R"({"version": ")" + version + R"(", "page": "https://example.org/new"})";
}

class FeedUpdaterTest : public testing::Test {
  protected:
    FeedUpdaterTest() { relaunch(); }

    /// Ends the program and starts it again, with the settings as they are.
    void relaunch(const std::string& feed = address) {
        updater_.reset();
        updater_ = std::make_unique<FeedUpdater>(
            FeedUpdater::Services{
                source, views, defaults, loop,
                [this] {
                    return std::chrono::system_clock::time_point(
                        std::chrono::duration_cast<std::chrono::system_clock::duration>(clock_));
                }},
            Version::parse("1.3").value(), feed);
        updater_->start();
    }

    FeedUpdater& updater() { return *updater_; }

    /// Lets time pass, for the clock on the wall too.
    void pass(Seconds span) {
        for (Seconds done{0}; done < span; done += minute) {
            clock_ += minute;
            loop.advance(minute);
        }
    }

    void setClock(Seconds sinceEpoch) { clock_ = sinceEpoch; }
    Seconds clock() const { return clock_; }

    std::size_t fetches() const { return source.addresses().size(); }

    template <typename State>
    const State* shown() const {
        return views.model() != nullptr ? std::get_if<State>(&views.model()->state()) : nullptr;
    }

    ManualRunLoop loop;
    MemoryFeedSource source;
    MemoryUserDefaults defaults;
    FakeUpdateViews views;

  private:
    Seconds clock_{1.7e9};
    std::unique_ptr<FeedUpdater> updater_;
};

TEST_F(FeedUpdaterTest, AManualCheckShowsThatItChecksAndThenTheResult) {
    updater().checkForUpdates();
    ASSERT_TRUE(shown<Checking>());
    EXPECT_EQ(views.state->timesInFront, 1);
    EXPECT_EQ(source.addresses(), std::vector<std::string>{address});
    updater().checkForUpdates();
    EXPECT_EQ(views.state->timesInFront, 2);
    EXPECT_EQ(fetches(), 1U) << "the one under way is shown";

    source.answer(feedWith("1.3.0"));
    EXPECT_TRUE(shown<UpToDate>());
    updater().checkForUpdates();
    EXPECT_TRUE(shown<Checking>());
    source.answer(feedWith("1.2.9"));
    EXPECT_TRUE(shown<UpToDate>()) << "an older one is none to offer";
    updater().checkForUpdates();
    source.answer(feedWith("1.10"));
    ASSERT_TRUE(shown<Update>());
    EXPECT_EQ(shown<Update>()->page, "https://example.org/new");
    EXPECT_EQ(views.windows, 1);
}

TEST_F(FeedUpdaterTest, EveryFailureHasItsOwnSentence) {
    std::set<std::string> sentences;
    const auto problem = [&] {
        EXPECT_TRUE(shown<CheckFailed>());
        return shown<CheckFailed>() ? shown<CheckFailed>()->problem : "";
    };
    constexpr auto last = static_cast<int>(FeedError::fetcherFailed);
    for (int error = 0; error <= last; ++error) {
        updater().checkForUpdates();
        source.fail(static_cast<FeedError>(error), 503);
        sentences.insert(problem());
    }
    updater().checkForUpdates();
    source.answer("<html>please log in to the network</html>");
    sentences.insert(problem());
    EXPECT_EQ(sentences.size(), static_cast<std::size_t>(last) + 2);
    EXPECT_NE(describe({FeedError::httpStatus, 404}).find("404"), std::string::npos);
}

TEST_F(FeedUpdaterTest, ClosingEndsTheCheck) {
    updater().checkForUpdates();
    views.close();
    EXPECT_FALSE(source.isFetching());
    EXPECT_EQ(views.model(), nullptr);

    updater().checkForUpdates();
    EXPECT_TRUE(shown<Checking>());
    EXPECT_EQ(fetches(), 2U);
    source.answer(feedWith("2"));
    views.close();
    EXPECT_EQ(views.model(), nullptr);
}

TEST_F(FeedUpdaterTest, NothingIsFetchedByItselfUntilTheUserWantsIt) {
    pass(3 * day);
    EXPECT_EQ(fetches(), 0U);
    EXPECT_FALSE(updater().automaticallyChecksForUpdates());
    EXPECT_TRUE(defaults.storedValues().empty());

    int changes = 0;
    const auto token = updater().changed().subscribe([&] { ++changes; });
    updater().setAutomaticallyChecksForUpdates(false);
    EXPECT_EQ(changes, 0);
    updater().setAutomaticallyChecksForUpdates(true);
    EXPECT_EQ(changes, 1);
    pass(4 * minute);
    EXPECT_EQ(fetches(), 0U);
    pass(minute);
    EXPECT_EQ(fetches(), 1U);
    defaults.edit(preference::automaticUpdateChecks, false);
    EXPECT_EQ(changes, 2);
    EXPECT_FALSE(source.isFetching()) << "unwanted, it ends";
    pass(3 * day);
    EXPECT_EQ(fetches(), 1U);
}

TEST_F(FeedUpdaterTest, ChecksOnceADayAcrossRelaunches) {
    updater().setAutomaticallyChecksForUpdates(true);
    pass(5 * minute);
    EXPECT_EQ(fetches(), 1U);
    source.fail(FeedError::unreachable);
    for (int launch = 0; launch < 11; ++launch) {
        relaunch();
        pass(2 * hour);
    }
    EXPECT_EQ(fetches(), 1U) << "not even one that failed is repeated the same day";
    pass(4 * hour);
    EXPECT_EQ(fetches(), 2U);
    source.answer(feedWith("1.3"));
    pass(10 * day);
    EXPECT_GE(fetches(), 3U);
    EXPECT_EQ(views.windows, 0);

    relaunch();
    source.answer(feedWith("1.3"));
    setClock(clock() + 30 * day);
    relaunch();
    const auto before = fetches();
    pass(4 * minute);
    EXPECT_EQ(fetches(), before) << "a launch is not slowed down";
    pass(minute);
    EXPECT_EQ(fetches(), before + 1);
}

TEST_F(FeedUpdaterTest, AManualCheckCountsForTheDay) {
    updater().setAutomaticallyChecksForUpdates(true);
    updater().checkForUpdates();
    source.answer(feedWith("1.3"));
    pass(23 * hour);
    EXPECT_EQ(fetches(), 1U);
    pass(5 * hour);
    EXPECT_EQ(fetches(), 2U);
}

TEST_F(FeedUpdaterTest, AWrongClockOrGarbageDoesNotEndTheChecks) {
    const PropertyValue garbage[] = {std::string("yesterday"),
                                     std::numeric_limits<double>::quiet_NaN(),
                                     -1e300,
                                     1e300,
                                     PropertyData{1, 2},
                                     std::int64_t{9'000'000'000'000},
                                     std::string("1e999")};
    updater().setAutomaticallyChecksForUpdates(true);
    for (const auto& value : garbage) {
        const auto before = fetches();
        defaults.edit(preference::lastUpdateCheck, value);
        relaunch();
        pass(6 * minute);
        EXPECT_EQ(fetches(), before + 1);
        source.answer(feedWith("1.3"));
        pass(20 * hour);
        EXPECT_EQ(fetches(), before + 1) << "set right by the check";
    }

    setClock(Seconds{0});
    const auto before = fetches();
    pass(5 * hour);
    EXPECT_EQ(fetches(), before + 1) << "the clock was set back while the program ran";
    source.answer(feedWith("1.3"));
    pass(20 * hour);
    EXPECT_EQ(fetches(), before + 1);
}

TEST_F(FeedUpdaterTest, AnAutomaticCheckTellsOfEachVersionOnce) {
    updater().setAutomaticallyChecksForUpdates(true);
    const auto nextDay = [&](const std::string& version) {
        pass(day + 5 * hour);
        ASSERT_TRUE(source.isFetching());
        EXPECT_FALSE(shown<Checking>()) << "it works unseen";
        source.answer(feedWith(version));
    };
    nextDay("1.3");
    EXPECT_EQ(views.windows, 0);
    nextDay("1.4");
    EXPECT_TRUE(shown<Update>());
    EXPECT_EQ(views.state->timesQuiet, 1);
    EXPECT_EQ(views.state->timesInFront, 0);
    views.close();
    nextDay("1.4.0");
    relaunch();
    nextDay("1.4");
    EXPECT_EQ(views.windows, 1);
    nextDay("1.5");
    EXPECT_EQ(views.windows, 2);
    EXPECT_EQ(shown<Update>()->version, Version::parse("1.5"));
    views.close();

    nextDay("1.4");
    nextDay("1.5");
    updater().checkForUpdates();
    source.answer(feedWith("1.4"));
    EXPECT_EQ(views.windows, 3);
    EXPECT_EQ(shown<Update>()->version, Version::parse("1.4")) << "what the user asks for is told";
    views.close();
    nextDay("1.5");
    EXPECT_EQ(views.windows, 3) << "the feed went back and on again";

    defaults.edit(preference::announcedVersion, std::string("garbage"));
    nextDay("1.5");
    EXPECT_EQ(views.windows, 4);
}

TEST_F(FeedUpdaterTest, WhatTheUserWasShownIsNotAnnouncedAgain) {
    updater().setAutomaticallyChecksForUpdates(true);
    updater().checkForUpdates();
    source.answer(feedWith("1.4"));
    views.close();
    pass(day + 5 * hour);
    source.answer(feedWith("1.4"));
    EXPECT_EQ(views.windows, 1);
}

TEST_F(FeedUpdaterTest, AManualCheckTakesOverTheAutomaticOne) {
    updater().setAutomaticallyChecksForUpdates(true);
    pass(5 * minute);
    ASSERT_TRUE(source.isFetching());
    updater().checkForUpdates();
    EXPECT_TRUE(shown<Checking>());
    EXPECT_EQ(fetches(), 1U);
    updater().setAutomaticallyChecksForUpdates(false);
    EXPECT_TRUE(source.isFetching()) << "the user still waits for it";
    source.fail(FeedError::timedOut);
    EXPECT_TRUE(shown<CheckFailed>());
}

TEST_F(FeedUpdaterTest, AnAutomaticFailureLeavesAnOpenWindowAlone) {
    updater().setAutomaticallyChecksForUpdates(true);
    updater().checkForUpdates();
    source.answer(feedWith("1.3"));
    pass(day + 5 * hour);
    ASSERT_TRUE(source.isFetching());
    source.fail(FeedError::unreachable);
    EXPECT_TRUE(shown<UpToDate>());
    pass(day + 5 * hour);
    views.close();
    EXPECT_TRUE(source.isFetching()) << "closing an old result ends no check";
    source.answer(feedWith("1.4"));
    EXPECT_TRUE(shown<Update>());
}

TEST_F(FeedUpdaterTest, WithoutAFeedEverythingSaysSo) {
    relaunch("");
    updater().setAutomaticallyChecksForUpdates(true);
    pass(3 * day);
    EXPECT_EQ(views.windows, 0);
    updater().checkForUpdates();
    EXPECT_TRUE(shown<NoFeed>());
    EXPECT_EQ(views.state->timesInFront, 1);
    EXPECT_EQ(fetches(), 0U);
}

}  // namespace
}  // namespace tessellon
