// The program that fetches one update feed and ends. Whatever happens to an answer before its size
// is known happens there, away from the program that serves the user.
#pragma once

#include "platform/feed_source.h"

namespace tessellon {

/// Fetches the only argument, an address, from `source`, writes the report (feed_report.h) to the
/// standard output and ends the process. Gives the exit code when it cannot: 2 for other arguments.
int runFeedFetcher(int argc, char** argv, FeedSource& source);

}  // namespace tessellon
