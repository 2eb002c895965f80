#include "timer_process.h"

#include "harness/private_desktop.h"

#include <chrono>
#include <sstream>
#include <stdexcept>

namespace tessellon::benchmarks {

Samples samplesOf(const std::string& program) {
    desktop::PrivateDesktop desktop;
    desktop.startWindowManager("openbox");
    desktop.startCompositor();
    auto options = desktop.processOptions("timer");
    desktop::Process timer({program}, options);
    constexpr std::chrono::seconds enough{60};
    const auto end = timer.waitForEnd(enough);
    if (!end || end->exitCode != 0) {
        throw std::runtime_error(
            program + " failed: " + desktop::fileContents(options.standardError.value_or("")));
    }
    Samples samples;
    std::istringstream lines(desktop::fileContents(options.standardOutput.value_or("")));
    std::string name;
    double milliseconds = 0;
    while (std::getline(lines >> std::ws, name, '\t') >> milliseconds) {
        samples[name].emplace_back(milliseconds);
    }
    return samples;
}

}  // namespace tessellon::benchmarks
