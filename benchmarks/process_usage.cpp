#include "process_usage.h"

#include "harness/process.h"

#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

#include <unistd.h>

namespace tessellon::benchmarks {
namespace {

/// The number behind "NAME:" in a file of the kernel's.
std::uint64_t field(const std::filesystem::path& file, const std::string& name) {
    std::istringstream lines(desktop::fileContents(file));
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(name + ":")) {
            return std::stoull(line.substr(name.size() + 1));
        }
    }
    throw std::runtime_error(file.string() + " has no " + name);
}

/// One of the sums over all of a process's memory, in megabytes.
double memory(pid_t process, const std::string& kind) {
    constexpr double kilobytesPerMegabyte = 1024;
    return static_cast<double>(field("/proc/" + std::to_string(process) + "/smaps_rollup", kind)) /
           kilobytesPerMegabyte;
}

}  // namespace

Usage usageOf(pid_t process) {
    Usage usage;
    const std::filesystem::path tasks = "/proc/" + std::to_string(process) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks)) {
        usage.wakeUps += field(task.path() / "status", "voluntary_ctxt_switches");
        // proc(5): the name in parentheses may hold spaces; utime and stime are the 12th and 13th
        // words behind it.
        const std::string stat = desktop::fileContents(task.path() / "stat");
        std::istringstream words(stat.substr(stat.rfind(')') + 1));
        constexpr int wordsBefore = 11;
        std::string ignored;
        for (int i = 0; i < wordsBefore; ++i) {
            words >> ignored;
        }
        double userTicks = 0;
        double systemTicks = 0;
        words >> userTicks >> systemTicks;
        usage.processorSeconds +=
            (userTicks + systemTicks) / static_cast<double>(sysconf(_SC_CLK_TCK));
    }
    return usage;
}

double proportionalMegabytes(pid_t process) {
    return memory(process, "Pss");
}

double ownMegabytes(pid_t process) {
    return memory(process, "Anonymous");
}

}  // namespace tessellon::benchmarks
