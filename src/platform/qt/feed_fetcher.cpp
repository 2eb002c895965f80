#include "platform/qt/feed_fetcher.h"

#include "base/log.h"
#include "platform/feed_report.h"

#include <QCoreApplication>
#include <cerrno>
#include <cstdlib>
#include <string>
#include <string_view>

#include <sys/resource.h>
#include <unistd.h>

// GCC and Clang each have a way to tell; the toolkit defines Clang's for GCC too.
#if defined(__SANITIZE_ADDRESS__)
#define TESSELLON_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TESSELLON_ADDRESS_SANITIZER
#endif
#endif

namespace tessellon {
namespace {

constexpr int exitUsage = 2;

void limit(__rlimit_resource resource, rlim_t most) {
    rlimit now{};
    if (getrlimit(resource, &now) == 0 && most < now.rlim_max) {
        const rlimit wanted{most, most};
        setrlimit(resource, &wanted);
    }
}

/// What a fetch may take of the machine, which the toolkit does not limit by itself.
void limitResources() {
    limit(RLIMIT_CORE, 0);
    // In seconds; whoever waits for the result does not wait longer.
    limit(RLIMIT_CPU, 30);
#ifndef TESSELLON_ADDRESS_SANITIZER  // which needs more by far
    // Several times what a fetch with TLS needs.
    constexpr rlim_t mostMemory = 256U << 20U;
    limit(RLIMIT_DATA, mostMemory);
#endif
}

bool writeReport(std::string_view report) {
    while (!report.empty()) {
        const auto written = ::write(STDOUT_FILENO, report.data(), report.size());
        if (written > 0) {
            report.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

}  // namespace

int runFeedFetcher(int argc, char** argv, FeedSource& source) {
    limitResources();
    // The toolkit takes the arguments that it knows out of the list.
    const std::string address = argc == 2 ? argv[1] : "";
    if (argc != 2) {
        logError("tessellon-fetch-feed is started by tessellon, with the address of a feed");
        return exitUsage;
    }
    const QCoreApplication application(argc, argv);
    const Token fetch = source.fetch(address, [](const FeedResult& result) {
        // At once: the toolkit's threads would be waited for, which a server or a resolver can
        // hold.
        _exit(writeReport(feedReport(result)) ? EXIT_SUCCESS : EXIT_FAILURE);
    });
    return QCoreApplication::exec();
}

}  // namespace tessellon
