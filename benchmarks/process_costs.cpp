// What the program costs as a process: the time until its shortcuts work, the memory and the
// processor time it takes while nobody presses anything, and its size.
#include "contenders.h"
#include "harness/program.h"
#include "harness/status_notifier_host.h"
#include "harness/tray.h"
#include "harness/wait.h"
#include "process_usage.h"
#include "sections.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace tessellon::benchmarks {
namespace {

using desktop::PrivateDesktop;

constexpr int starts = 20;
constexpr Milliseconds mostForStart{100};
constexpr std::chrono::seconds settlingSpan{3};
constexpr std::chrono::seconds idleSpan{20};
constexpr double mostWakeUpsPerSecond = 1;
constexpr double mostMegabytes = 30;

/// Starts and ends the program over and over. Gives how long it takes from the start of the process
/// until something is there that is not without it.
std::vector<Milliseconds> timeStarts(PrivateDesktop& desktop, const std::string& what,
                                     const std::function<bool()>& isThere) {
    desktop::Program program(desktop);
    std::vector<Milliseconds> times;
    for (int i = 0; i <= starts; ++i) {
        const auto start = Clock::now();
        program.launch();
        const auto deadline = start + desktop::patience;
        while (!isThere()) {
            if (!program.running() || Clock::now() > deadline) {
                throw std::runtime_error("after the start the program has no " + what);
            }
            // Every question stops the whole server for a moment.
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        }
        if (i > 0) {
            times.emplace_back(Clock::now() - start);
        }
        if (!program.waitUntilHotKeysActive()) {
            throw std::runtime_error("the program's shortcuts do not become active");
        }
        program.stop();
        if (!desktop::waitUntil([&] { return !isThere(); })) {
            throw std::runtime_error("the program's end leaves " + what);
        }
    }
    return times;
}

void measureStarts(Report& report, PrivateDesktop& desktop) {
    const auto shortcuts = timeStarts(desktop, "shortcuts", [&] {
        return desktop.x().combinationIsHeld(
            static_cast<std::uint8_t>(desktop::Key::left),
            XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4);
    });
    report.add(timeRow("start of the process → shortcuts active", shortcuts, "",
                       atMost(mostForStart, shortcuts,
                              "95 % of the times are below " + text(percentile(shortcuts, 0.95)) +
                                  "; the machine has other work, or the toolkit's libraries were "
                                  "not in memory.")));
    {
        const desktop::StatusNotifierHost host(desktop.environment());
        report.add(
            timeRow("start → item in a tray of the session bus",
                    timeStarts(desktop, "item on the bus", [&] { return !host.items().empty(); })));
    }
    desktop::startTray(desktop, desktop::TrayKind::tint2);
    report.add(timeRow("start → icon in a tray of the X server",
                       timeStarts(desktop, "icon in the tray", [&] {
                           return desktop::findTrayIcon(desktop.x(), "Tessellon").has_value();
                       })));
}

/// The shared libraries that a program names, with those that these name, as the linker lists them.
std::size_t namedLibraries(PrivateDesktop& desktop, const std::string& program) {
    const auto options = desktop.processOptions("ldd");
    desktop::Process list({"ldd", program}, options);
    list.waitForEnd(desktop::patience);
    std::istringstream lines(desktop::fileContents(options.standardOutput.value()));
    std::size_t count = 0;
    for (std::string line; std::getline(lines, line);) {
        count += line.find(".so") != std::string::npos ? 1U : 0U;
    }
    if (count == 0) {
        throw std::runtime_error("the libraries of " + program + " cannot be listed");
    }
    return count;
}

/// Those that a process has in its memory, with the ones it loads while it runs.
std::size_t mappedLibraries(pid_t process) {
    std::istringstream lines(desktop::fileContents("/proc/" + std::to_string(process) + "/maps"));
    std::set<std::string> libraries;
    for (std::string line; std::getline(lines, line);) {
        const auto path = line.find('/');
        if (path != std::string::npos && line.find(".so", path) != std::string::npos) {
            libraries.insert(line.substr(path));
        }
    }
    return libraries.size();
}

void measureIdle(Report& report, PrivateDesktop& desktop) {
    const desktop::StatusNotifierHost host(desktop.environment());
    desktop::Program program(desktop);
    program.start();
    if (!desktop::waitUntil([&] { return !host.items().empty(); })) {
        throw std::runtime_error("the program has no item in the tray");
    }
    program.waitUntilIdle();
    const pid_t process = program.process().pid();
    // What comes after the start, such as reading the list of applications, is not idling.
    std::this_thread::sleep_for(settlingSpan);
    waitUntilQuiet(process);
    const Usage before = usageOf(process);
    std::this_thread::sleep_for(idleSpan);
    const Usage after = usageOf(process);

    const auto seconds = static_cast<double>(idleSpan.count());
    const double perSecond = static_cast<double>(after.wakeUps - before.wakeUps) / seconds;
    const double share = (after.processorTime - before.processorTime).count() / (10 * seconds);
    const double megabytes = proportionalMegabytes(process);
    const auto value = [&](std::string what, std::string measured,
                           std::optional<Budget> budget = std::nullopt) {
        report.add({std::move(what), std::move(measured), "", "", std::move(budget)});
    };
    value("wake-ups per second while idle", number(perSecond),
          Budget{"≤ " + number(mostWakeUpsPerSecond, 0), perSecond <= mostWakeUpsPerSecond,
                 "something else than the health check, which comes every two seconds, woke it."});
    value("processor time while idle", number(share, 3) + " %");
    value("memory with all it shares (RSS)", number(residentMegabytes(process), 1) + " MB");
    value("memory, what is shared divided (PSS)", number(megabytes, 1) + " MB",
          Budget{"≤ " + number(mostMegabytes, 0) + " MB", megabytes <= mostMegabytes,
                 "of it " + number(ownMegabytes(process), 1) +
                     " MB are its own; the rest are libraries that nobody else used."});
    value("memory of its own", number(ownMegabytes(process), 1) + " MB");
    const auto binary = desktop::programPath();
    constexpr double bytesPerMegabyte = 1024.0 * 1024.0;
    value("size of the program",
          number(static_cast<double>(std::filesystem::file_size(binary)) / bytesPerMegabyte, 1) +
              " MB");
    value("shared libraries it names, with theirs",
          std::to_string(namedLibraries(desktop, binary.string())));
    value("shared libraries in memory while it runs", std::to_string(mappedLibraries(process)));
}

}  // namespace

void measureProcessCosts(Report& report) {
    report.section("process", "The process");
    report.table("");
    {
        PrivateDesktop desktop;
        desktop.startWindowManager("openbox");
        desktop.startWithWindow({"xterm"});
        measureStarts(report, desktop);
    }
    PrivateDesktop desktop;
    desktop.startWindowManager("openbox");
    desktop.startWithWindow({"xterm"});
    measureIdle(report, desktop);
}

}  // namespace tessellon::benchmarks
