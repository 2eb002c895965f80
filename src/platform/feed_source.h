// The port through which an update feed is fetched: a small document at one address.
#pragma once

#include "base/token.h"

#include <cstdint>
#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace tessellon {

enum class FeedError : std::uint8_t {
    addressNotAllowed,  // neither https nor file, or no address at all
    unreachable,
    timedOut,
    notTrusted,        // no secure connection, or to somebody who cannot prove who they are
    insecureRedirect,  // sent on to an address that is not https
    tooManyRedirects,
    httpStatus,  // the server answered with something else than the document
    tooLarge,
    noSuchFile,
    notAFile,  // a folder, a pipe, a device
    fileNotReadable,
    fetcherFailed,  // our own side: what was to fetch it could not be run, or broke
};

struct FeedFailure {
    FeedError error = FeedError::unreachable;
    /// The server's answer (RFC 9110) with FeedError::httpStatus, else 0.
    int httpStatus = 0;
    bool operator==(const FeedFailure&) const = default;
};

/// The document, or why there is none.
using FeedResult = std::variant<std::vector<std::uint8_t>, FeedFailure>;

class FeedSource {
  public:
    virtual ~FeedSource() = default;

    /// Fetches what is at `address`. Returns at once; `callback` is called once, later and within a
    /// bounded time, from the run loop. Dropping the token before that ends the fetch.
    virtual Token fetch(const std::string& address, std::function<void(FeedResult)> callback) = 0;
};

}  // namespace tessellon
