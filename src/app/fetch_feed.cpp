// The program that tessellon starts to have an update feed fetched.
#include "platform/qt/feed_fetcher.h"
#include "platform/qt/network_feed_source.h"

int main(int argc, char** argv) {
    tessellon::NetworkFeedSource source(TESSELLON_VERSION);
    return tessellon::runFeedFetcher(argc, argv, source);
}
