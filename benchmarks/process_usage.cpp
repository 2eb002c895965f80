#include "process_usage.h"

#include "harness/process.h"

#include <chrono>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

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
        // The first number is the time on a processor, in nanoseconds.
        std::istringstream words(desktop::fileContents(task.path() / "schedstat"));
        std::uint64_t nanoseconds = 0;
        if (words >> nanoseconds) {  // else the thread has just ended
            usage.processorTime += std::chrono::nanoseconds(nanoseconds);
            usage.wakeUps += field(task.path() / "status", "voluntary_ctxt_switches");
        }
    }
    return usage;
}

double residentMegabytes(pid_t process) {
    return memory(process, "Rss");
}

double proportionalMegabytes(pid_t process) {
    return memory(process, "Pss");
}

double ownMegabytes(pid_t process) {
    return memory(process, "Anonymous");
}

}  // namespace tessellon::benchmarks
