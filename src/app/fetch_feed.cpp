// The program that the program starts to read an update feed.
#include "platform/qt/feed_fetcher.h"
#include "platform/qt/network_feed_source.h"

int main(int argc, char** argv) {
    tessellon::NetworkFeedSource source(TESSELLON_VERSION);
    return tessellon::runFeedFetcher(argc, argv, source);
}
