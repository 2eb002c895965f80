#include "harness/program.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace tessellon::desktop {
namespace {

struct Activity {
    bool sleeping = false;
    std::string switches;
};

// The scheduler's view of the main thread: whether it sleeps, and how often it has gone to sleep.
Activity activityOf(pid_t process) {
    std::istringstream status(fileContents("/proc/" + std::to_string(process) + "/status"));
    Activity activity;
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("State:")) {
            activity.sleeping = line.find('S', sizeof "State:") != std::string::npos;
        } else if (line.starts_with("voluntary_ctxt_switches:")) {
            activity.switches = line;
        }
    }
    return activity;
}

}  // namespace

std::filesystem::path programPath() {
    const char* chosen = std::getenv("TESSELLON_PROGRAM");
    return chosen != nullptr ? chosen : TESSELLON_PROGRAM_PATH;
}

Program::Program(PrivateDesktop& desktop) : desktop_(desktop) {
    if (!std::filesystem::exists(settingsFile())) {
        change({{"onboarded", true}});
    }
}

void Program::launch(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), programPath());
    process_.reset();
    auto options = desktop_.processOptions("program");
    for (const auto& [name, value] : environment_) {
        options.environment[name] = value;
    }
    process_ = std::make_unique<Process>(std::move(arguments), options);
}

void Program::start() {
    launch();
    if (!waitUntilHotKeysActive()) {
        throw std::runtime_error("the program's shortcuts do not become active: " +
                                 standardError());
    }
    waitUntilIdle();  // the shortcuts are registered one after the other
}

bool Program::waitUntilRunning() {
    return waitUntil([&] {
               return !running() || desktop_.x().selectionOwner("_TESSELLON_S0") != XCB_WINDOW_NONE;
           }) &&
           running();
}

bool Program::waitUntilHotKeysActive(std::chrono::milliseconds timeout) {
    // Previous display: the last of the snap actions, and no window manager comes with it.
    return waitUntil(
               [&] {
                   return !running() || desktop_.x().combinationIsHeld(
                                            static_cast<std::uint8_t>(Key::left),
                                            XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4);
               },
               timeout) &&
           running();
}

void Program::waitUntilIdle() {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds quiet{100};
    desktop_.x().sync();
    std::string switches;
    Clock::time_point since = Clock::now();
    waitUntil([&] {
        const Activity now = activityOf(process_->pid());
        if (!now.sleeping || now.switches != switches) {
            switches = now.switches;
            since = Clock::now();
        }
        return Clock::now() - since >= quiet;
    });
}

ProcessEnd Program::stop() {
    return process_->stop();
}

std::string Program::standardOutput() const {
    return fileContents(desktop_.processOptions("program").standardOutput.value());
}

std::string Program::standardError() const {
    return fileContents(desktop_.processOptions("program").standardError.value());
}

std::filesystem::path Program::settingsFile() const {
    return desktop_.home() / ".config/tessellon/defaults.plist";
}

}  // namespace tessellon::desktop
