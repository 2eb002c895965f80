// What the kernel says a process has used.
#pragma once

#include "statistics.h"

#include <cstdint>

#include <sys/types.h>

namespace tessellon::benchmarks {

struct Usage {
    Milliseconds processorTime{};
    std::uint64_t wakeUps = 0;
};

/// Of all threads together, since the process began.
Usage usageOf(pid_t process);

/// The memory that a process has in use, with all that it shares (RSS), in megabytes.
double residentMegabytes(pid_t process);

/// The memory of a process, with what it shares divided among those who share it (PSS), in
/// megabytes.
double proportionalMegabytes(pid_t process);

/// The memory that is a process's alone, whoever else runs, in megabytes.
double ownMegabytes(pid_t process);

}  // namespace tessellon::benchmarks
