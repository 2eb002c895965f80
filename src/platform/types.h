// Small types that several ports share.
#pragma once

#include <chrono>
#include <cstdint>

namespace tessellon {

/// A process id. Negative values stand for clients whose process the desktop cannot tell: each such
/// client has one of its own, so its windows still belong together.
using Pid = std::int32_t;

/// A span of time in seconds, fractions included.
using Seconds = std::chrono::duration<double>;

}  // namespace tessellon
