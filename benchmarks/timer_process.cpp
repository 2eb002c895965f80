#include "timer_process.h"

#include "harness/private_desktop.h"

#include <chrono>
#include <sstream>
#include <stdexcept>

namespace tessellon::benchmarks {

std::string Display::description() const {
    return std::to_string(width) + " × " + std::to_string(height) +
           (hasCompositor ? ", with a compositor" : ", without a compositor");
}

Samples samplesOf(const std::string& program, const Display& display) {
    const auto size = std::to_string(display.width) + "x" + std::to_string(display.height) + "x24";
    desktop::PrivateDesktop desktop(desktop::Monitors::one, {"-screen", "0", size});
    desktop.startWindowManager("openbox");
    if (display.hasCompositor) {
        desktop.startCompositor();
    }
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
