// The fetcher of feeds, but for servers on this machine without TLS.
#include "platform/qt/feed_fetcher.h"
#include "platform/qt/network_feed_source.h"

int main(int argc, char** argv) {
    using tessellon::NetworkFeedSource;
    NetworkFeedSource source("1.2.3", {}, NetworkFeedSource::PlainLoopback::allowed);
    return tessellon::runFeedFetcher(argc, argv, source);
}
