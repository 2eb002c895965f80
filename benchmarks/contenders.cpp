#include "contenders.h"

#include "harness/wait.h"
#include "statistics.h"

#include <algorithm>
#include <csignal>
#include <sstream>
#include <utility>

namespace tessellon::benchmarks {
namespace {

std::string contextSwitches(pid_t process) {
    std::istringstream status(
        desktop::fileContents("/proc/" + std::to_string(process) + "/status"));
    std::string switches;
    for (std::string line; std::getline(status, line);) {
        if (line.find("ctxt_switches:") != std::string::npos) {
            switches += line;
        }
    }
    return switches;
}

}  // namespace

PlacementHints placementHints(desktop::XSession& x, xcb_window_t window) {
    // WM_NORMAL_HINTS as ICCCM lays it out: flags first, increments at 9 and 10, gravity at 17.
    constexpr std::uint32_t hasIncrements = 1U << 6U;
    constexpr std::uint32_t hasGravity = 1U << 9U;
    constexpr std::uint32_t staticGravity = 10;
    const auto hints = x.values(window, "WM_NORMAL_HINTS");
    PlacementHints result;
    if (hints.size() > 10 && (hints[0] & hasIncrements) != 0) {
        result.cellWidth = std::max(1, static_cast<int>(hints[9]));
        result.cellHeight = std::max(1, static_cast<int>(hints[10]));
    }
    result.keepsClientCorner =
        hints.size() > 17 && (hints[0] & hasGravity) != 0 && hints[17] == staticGravity;
    return result;
}

Contender::Contender(std::string name, desktop::PrivateDesktop& desktop, desktop::Process& process,
                     std::vector<desktop::Key> modifiers, std::vector<desktop::Key> keys)
    : name_(std::move(name)),
      desktop_(desktop),
      process_(process),
      modifiers_(std::move(modifiers)),
      keys_(std::move(keys)) {}

void Contender::resume() {
    process_.signal(SIGCONT);
    waitUntilQuiet(process_.pid());
}

void Contender::pause() {
    waitUntilQuiet(process_.pid());
    process_.signal(SIGSTOP);
}

void Contender::prepare() {
    for (const desktop::Key key : modifiers_) {
        desktop_.keyboard().press(key);
    }
}

void Contender::start(std::size_t key) {
    desktop_.keyboard().press(keys_.at(key));
}

void Contender::finish(std::size_t key) {
    desktop_.keyboard().release(keys_.at(key));
    for (auto modifier = modifiers_.rbegin(); modifier != modifiers_.rend(); ++modifier) {
        desktop_.keyboard().release(*modifier);
    }
}

void waitUntilQuiet(pid_t process) {
    constexpr Milliseconds quiet{40};
    auto switches = contextSwitches(process);
    auto since = Clock::now();
    desktop::waitUntil([&] {
        auto now = contextSwitches(process);
        if (now != switches) {
            switches = std::move(now);
            since = Clock::now();
        }
        return Clock::now() - since >= quiet;
    });
}

}  // namespace tessellon::benchmarks
