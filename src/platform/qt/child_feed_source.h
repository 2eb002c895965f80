// Update feeds by way of a process of their own. Whatever a server or a resolver does to that one,
// the program neither waits for it nor holds its memory, and it is killed when it takes too long.
#pragma once

#include "platform/feed_source.h"
#include "platform/types.h"

#include <QObject>
#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace tessellon {

class ChildFeedSource final : public FeedSource {
  public:
    struct Limits {
        /// The largest document, in bytes.
        std::size_t size = 65536;
        /// From the start of the process to its end.
        Seconds total{20};
    };

    /// `fetchers` are the paths at which the program may be that fetches a feed (feed_fetcher.h);
    /// the first that is there when a feed is wanted is started. A QCoreApplication must exist
    /// during fetches. Nothing that a fetcher does leads to anything but a FeedResult. Fetches end
    /// with the source.
    explicit ChildFeedSource(std::vector<std::filesystem::path> fetchers);
    ChildFeedSource(std::vector<std::filesystem::path> fetchers, const Limits& limits);

    Token fetch(const std::string& address, std::function<void(FeedResult)> callback) override;

  private:
    std::vector<std::filesystem::path> fetchers_;
    Limits limits_;
    QObject fetches_;  // the parent of those whose process has not ended
};

/// Where the fetcher of the program at the path `program` is installed, or was built.
std::vector<std::filesystem::path> feedFetchersOf(const std::filesystem::path& program);

}  // namespace tessellon
