#include "crowd.h"

#include "contenders.h"
#include "harness/wait.h"

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace tessellon::benchmarks {

void openCrowd(desktop::PrivateDesktop& desktop, std::size_t count) {
    constexpr std::size_t processes = 5;
    const auto self = std::filesystem::read_symlink("/proc/self/exe").string();
    for (std::size_t i = 0; i < processes; ++i) {
        desktop.start({self, "--show-windows", std::to_string(count / processes)});
    }
    constexpr std::chrono::seconds enough{60};
    if (!desktop::waitUntil(
            [&] {
                const auto windows = desktop.windows().managed();
                return windows.size() == count && desktop.windows().visibleFrame(windows.back());
            },
            enough)) {
        throw std::runtime_error("the windows do not appear");
    }
    waitUntilQuiet(desktop.windowManagerProcess().pid());
}

}  // namespace tessellon::benchmarks
