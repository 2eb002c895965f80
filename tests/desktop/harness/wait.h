// Waiting for a state of the desktop, for everything that tests real programs: polls until the
// state is there, so that a fast machine loses no time and a slow one no test.
#pragma once

#include <chrono>
#include <thread>
#include <utility>

namespace tessellon::desktop {

/// How long a desktop on a busy machine may take before a test calls it broken.
inline constexpr std::chrono::seconds patience{20};

/// True as soon as `predicate` is true, false when it still is not after `timeout`.
template <typename Predicate>
bool waitUntil(Predicate&& predicate, std::chrono::milliseconds timeout = patience) {
    constexpr std::chrono::milliseconds pollInterval{2};
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    while (true) {
        if (predicate()) {
            return true;
        }
        if (std::chrono::steady_clock::now() >= deadline) {
            return false;
        }
        std::this_thread::sleep_for(pollInterval);
    }
}

}  // namespace tessellon::desktop
