#include "contenders.h"

#include "harness/wait.h"
#include "statistics.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <utility>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tessellon::benchmarks {
namespace {

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

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

KeyContender::KeyContender(std::string name, desktop::PrivateDesktop& desktop,
                           desktop::Process& process, std::vector<desktop::Key> modifiers,
                           std::vector<desktop::Key> keys)
    : Contender(std::move(name)),
      desktop_(desktop),
      process_(process),
      modifiers_(std::move(modifiers)),
      keys_(std::move(keys)) {}

void KeyContender::resume() {
    process_.signal(SIGCONT);
    waitUntilQuiet(process_.pid());
}

void KeyContender::pause() {
    waitUntilQuiet(process_.pid());
    process_.signal(SIGSTOP);
}

void KeyContender::prepare() {
    for (const desktop::Key key : modifiers_) {
        desktop_.keyboard().press(key);
    }
}

void KeyContender::start(std::size_t place) {
    desktop_.keyboard().press(keys_.at(place));
}

void KeyContender::finish(std::size_t place) {
    desktop_.keyboard().release(keys_.at(place));
    for (auto key = modifiers_.rbegin(); key != modifiers_.rend(); ++key) {
        desktop_.keyboard().release(*key);
    }
}

CommandContender::CommandContender(std::string name, const desktop::PrivateDesktop& desktop,
                                   std::vector<std::vector<std::string>> commands)
    : Contender(std::move(name)), commands_(std::move(commands)) {
    for (const auto& [variable, value] : desktop.environment()) {
        environment_.push_back(variable + "=" + value);
    }
}

void CommandContender::start(std::size_t place) {
    auto& command = commands_.at(place);
    const auto arguments = pointers(command);
    const auto environment = pointers(environment_);
    posix_spawn_file_actions_t silently;
    posix_spawn_file_actions_init(&silently);
    posix_spawn_file_actions_addopen(&silently, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const int error = posix_spawnp(&running_, arguments.front(), &silently, nullptr,
                                   arguments.data(), environment.data());
    posix_spawn_file_actions_destroy(&silently);
    if (error != 0) {
        throw std::runtime_error("cannot run " + command.front());
    }
}

void CommandContender::finish(std::size_t place) {
    int status = 0;
    if (waitpid(running_, &status, 0) != running_ || !WIFEXITED(status) ||
        WEXITSTATUS(status) != EXIT_SUCCESS) {
        throw std::runtime_error(commands_.at(place).front() + " failed");
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
