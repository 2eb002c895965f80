// Update feeds that are fetched by a process of their own: what servers, and that process itself,
// may do to the program.
#include "platform/qt/child_feed_source.h"

#include "platform/feed_report.h"
#include "qt/feed_server.h"
#include "qt/feed_source_fixture.h"

#include <QTimer>
#include <csignal>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessellon {
namespace {

namespace fs = std::filesystem;

/// True when no process of ours is left, not even to be asked how it ended.
bool noChildIsLeft() {
    return ::waitid(P_ALL, 0, nullptr, WEXITED | WNOHANG | WNOWAIT) == -1;
}

/// The process is gone, or is only left to be asked how it ended.
bool hasEnded(const std::string& pid) {
    const auto status = readFile("/proc/" + pid + "/stat");
    const auto name = status.rfind(") ");
    return name == std::string::npos || status.compare(name, 3, ") Z") == 0;
}

class ChildFeedSourceTest : public FeedSourceTest {
  protected:
    /// A fetcher that does something else. "$folder" is this test's folder, "$1" the address.
    fs::path script(const std::string& lines) const {
        auto path = temporary.path() / "script";
        writeFile(path, "#!/bin/sh\nfolder='" + temporary.path().string() + "'\n" + lines + "\n");
        fs::permissions(path, fs::perms::owner_all);
        return path;
    }
    /// One that tells its process id in the file "pid" and then does not end.
    fs::path hungScript() const {
        return script(
            "echo $$ > \"$folder/new\"; mv \"$folder/new\" \"$folder/pid\"\n"
            "exec sleep 1000");
    }
    std::string pidOfHung() const {
        const auto pid = readFile(temporary.path() / "pid");
        return pid.substr(0, pid.find('\n'));
    }

    FeedResult fetch(const fs::path& fetcher, const std::string& address = "https://a.example/") {
        ChildFeedSource source({fetcher}, limits);
        auto result = resultOf(source, address);
        EXPECT_TRUE(waitFor(noChildIsLeft));
        return result;
    }
    std::optional<FeedError> error(const fs::path& fetcher,
                                   const std::string& address = "https://a.example/") {
        return errorOf(fetch(fetcher, address));
    }

    ChildFeedSource::Limits limits;
};

FeedResult bytes(const std::string& text) {
    return std::vector<std::uint8_t>(text.begin(), text.end());
}

TEST_F(ChildFeedSourceTest, TheFetcherHandsOverDocumentsAndFailures) {
    FeedServer server(FeedServer::sends("200 OK", std::string("{\0\n\xFF}", 5)));
    EXPECT_EQ(fetch(PLAIN_FEED_FETCHER_PATH, server.address()),
              bytes(std::string("{\0\n\xFF}", 5)));
    FeedServer full(FeedServer::sends("200 OK", std::string(limits.size, ' ')));
    EXPECT_EQ(fetch(PLAIN_FEED_FETCHER_PATH, full.address()), bytes(std::string(limits.size, ' ')));
    FeedServer missing(FeedServer::sends("404 Not Found", "{}"));
    EXPECT_EQ(fetch(PLAIN_FEED_FETCHER_PATH, missing.address()),
              FeedResult(FeedFailure{FeedError::httpStatus, 404}));

    writeFile(temporary.path() / "a feed", "{}");
    EXPECT_EQ(fetch(FEED_FETCHER_PATH, "file://" + temporary.path().string() + "/a%20feed"),
              bytes("{}"));
    EXPECT_EQ(error(FEED_FETCHER_PATH, "file:///no/such/file"), FeedError::noSuchFile);
    for (const auto& address : {server.address(), std::string(), std::string("--version")}) {
        EXPECT_EQ(error(FEED_FETCHER_PATH, address), FeedError::addressNotAllowed) << address;
    }
    EXPECT_EQ(server.requests.size(), 1U) << "the real one asked without TLS";
}

TEST_F(ChildFeedSourceTest, AServerThatSendsForEverDoesNotStopTheProgram) {
    const std::string head = "HTTP/1.1 200 OK\r\n";
    const std::string filler(65536, 'x');
    std::string continues;
    for (int i = 0; i < 2000; ++i) {
        continues += "HTTP/1.1 100 Continue\r\n\r\n";
    }
    const std::pair<std::string, std::string> streams[] = {
        {head + "X: ", filler},
        {continues, continues},
        {head + "Transfer-Encoding: chunked\r\n\r\n1;", filler},
    };
    limits.total = Seconds{2};
    for (const auto& [start, part] : streams) {
        bool left = false;
        FeedServer server(FeedServer::sendsForEver(start, part, left));
        int turns = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&turns] { ++turns; });
        timer.start(10);
        const auto result = fetch(PLAIN_FEED_FETCHER_PATH, server.address());
        EXPECT_TRUE(std::holds_alternative<FeedFailure>(result)) << start.substr(0, 80);
        EXPECT_GT(turns, 10) << "the loop stood still";
        EXPECT_TRUE(waitFor([&] { return left; })) << "something still reads";
    }
}

TEST_F(ChildFeedSourceTest, WhateverAFetcherDoesThereIsAResult) {
    for (const auto* lines :
         {"exit 0", "exit 3", "kill -9 $$", "kill -ABRT $$", "echo hello", "echo",
          "printf document", "echo document 3; printf {}", "echo document 1; printf {}",
          "echo document -1", "echo document 99999999999999999999", "echo timed-out",
          "echo timed-out 0; echo more", "echo timed-out 1000", "echo unheard-of 0",
          "echo document 2; printf {}; exit 1", "head -c 60000 /dev/zero"}) {
        EXPECT_EQ(error(script(lines)), FeedError::fetcherFailed) << lines;
    }
    EXPECT_EQ(fetch(script("echo document 2; printf {}")), bytes("{}"));
    EXPECT_EQ(error(script("echo not-trusted 0")), FeedError::notTrusted);
    EXPECT_EQ(error(script("exec cat /dev/zero")), FeedError::tooLarge);
    EXPECT_EQ(error(script("head -c 65601 /dev/zero; exec sleep 1000")), FeedError::tooLarge);
    EXPECT_EQ(error(script("echo document 65537; head -c 65537 /dev/zero")), FeedError::tooLarge);

    const auto text = temporary.path() / "text";
    writeFile(text, "not to be run");
    for (const auto& path : {text, temporary.path(), temporary.path() / "absent", fs::path()}) {
        EXPECT_EQ(error(path), FeedError::fetcherFailed) << path;
    }
    limits.total = Seconds{0.2};
    EXPECT_EQ(error(hungScript()), FeedError::timedOut);
    EXPECT_EQ(error(script("kill -STOP $$")), FeedError::timedOut);
}

TEST_F(ChildFeedSourceTest, EveryResultSurvivesTheWay) {
    for (int each = 0; each <= static_cast<int>(FeedError::fetcherFailed); ++each) {
        const FeedResult result = FeedFailure{static_cast<FeedError>(each), each * 50};
        const auto report = feedReport(result);
        EXPECT_LE(report.size(), longestFeedReportHead);
        EXPECT_EQ(parseFeedReport(std::vector<std::uint8_t>(report.begin(), report.end())), result)
            << report;
    }
}

TEST_F(ChildFeedSourceTest, AFetcherStandsOnItsOwnFeet) {
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &blocked, &before), 0);
    const int secret = ::fcntl(STDERR_FILENO, F_DUPFD, 50);
    ASSERT_GE(secret, 50);
    fetch(
        script("grep SigBlk /proc/self/status > \"$folder/blocked\"\n"
               "ls /proc/$$/fd > \"$folder/descriptors\""));
    ::close(secret);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    EXPECT_EQ(readFile(temporary.path() / "blocked"), "SigBlk:\t0000000000000000\n");
    const auto descriptors = readFile(temporary.path() / "descriptors");
    EXPECT_TRUE(descriptors.starts_with("0\n1\n")) << descriptors;
    EXPECT_EQ(descriptors.find(std::to_string(secret)), std::string::npos) << descriptors;
}

TEST_F(ChildFeedSourceTest, NobodyIsCalledAndNothingRunsAfterTheTokenIsGone) {
    ChildFeedSource source({hungScript()}, limits);
    const auto fails = [](const FeedResult&) { ADD_FAILURE() << "called"; };
    auto token = source.fetch("https://a.example/", fails);
    ASSERT_TRUE(waitFor([&] { return !pidOfHung().empty(); }));
    EXPECT_FALSE(hasEnded(pidOfHung()));
    token.reset();
    EXPECT_TRUE(waitFor(noChildIsLeft));

    source.fetch("https://a.example/", fails).reset();
    EXPECT_TRUE(waitFor(noChildIsLeft)) << "given up before it had started";
    source.fetch("https://a.example/", fails).reset();
    ChildFeedSource({}, limits).fetch("https://a.example/", fails).reset();
    EXPECT_TRUE(waitFor(noChildIsLeft));

    ChildFeedSource quick({script("echo document 0")}, limits);
    bool called = false;
    token = quick.fetch("https://a.example/", [&](const FeedResult&) {
        called = true;
        token.reset();
    });
    EXPECT_TRUE(waitFor([&] { return called; }));
    EXPECT_TRUE(waitFor(noChildIsLeft));
}

using ChildFeedSourceDeathTest = ChildFeedSourceTest;

TEST_F(ChildFeedSourceDeathTest, AProgramThatEndsTakesItsFetchAlong) {
    const auto fetcher = hungScript();
    const auto started = [this](ChildFeedSource& source) {
        auto token = source.fetch("https://a.example/", [](const FeedResult&) {});
        waitFor([&] { return !pidOfHung().empty(); });
        return token;
    };
    EXPECT_EXIT(
        {
            ChildFeedSource source({fetcher}, limits);
            started(source).reset();
            delete &testApplication();
            _exit(7);
        },
        testing::ExitedWithCode(7), "");
    EXPECT_TRUE(waitFor([&] { return hasEnded(pidOfHung()); })) << "after an end in order";

    fs::remove(temporary.path() / "pid");
    EXPECT_EXIT(
        {
            ChildFeedSource source({fetcher}, limits);
            const auto token = started(source);
            raise(SIGKILL);
        },
        testing::KilledBySignal(SIGKILL), "");
    EXPECT_TRUE(waitFor([&] { return hasEnded(pidOfHung()); })) << "after one without warning";
}

TEST_F(ChildFeedSourceTest, TheFetcherIsFoundBesideTheProgramAndWhereItIsInstalled) {
    const auto places = feedFetchersOf("/usr/bin/tessellon");
    EXPECT_EQ(places, (std::vector<fs::path>{"/usr/bin/tessellon-fetch-feed",
                                             "/usr/libexec/tessellon-fetch-feed"}));
    const auto good = script("echo document 2; printf {}");
    std::optional<FeedResult> result;
    ChildFeedSource source({temporary.path() / "absent", good, temporary.path() / "third"});
    const auto token =
        source.fetch("https://a.example/", [&](const FeedResult& got) { result = got; });
    EXPECT_TRUE(waitFor([&] { return result.has_value(); }));
    EXPECT_EQ(result, bytes("{}"));
}

}  // namespace
}  // namespace tessellon
