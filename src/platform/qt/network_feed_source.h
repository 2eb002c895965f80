// Update feeds from the web, by https alone, and from files. Sends nothing about the user or the
// machine: the name and version of the program are all a server learns.
#pragma once

#include "platform/feed_source.h"
#include "platform/types.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace tessellon {

class NetworkFeedSource final : public FeedSource {
  public:
    /// Whether a server on this machine's own address (127.0.0.1) may be asked without TLS. For
    /// tests; what such a server redirects to is held to the same rule.
    enum class PlainLoopback : std::uint8_t { refused, allowed };

    struct Limits {
        /// The largest document, in bytes.
        std::size_t size = 65536;
        int redirects = 5;
        /// For everything, and between two signs of life from the server.
        Seconds total{20};
        Seconds idle{10};
    };

    /// `version` is the program's own, as servers are told it. The network is not touched before
    /// the first fetch. A QCoreApplication must exist during fetches.
    explicit NetworkFeedSource(std::string version);
    NetworkFeedSource(std::string version, const Limits& limits, PlainLoopback plainLoopback);

    Token fetch(const std::string& address, std::function<void(FeedResult)> callback) override;

  private:
    std::string version_;
    Limits limits_;
    PlainLoopback plainLoopback_ = PlainLoopback::refused;
};

}  // namespace tessellon
