// What the program costs as a process: the time until its shortcuts work, and the memory and the
// processor time it takes while nobody presses anything.
#include "contenders.h"
#include "harness/program.h"
#include "harness/wait.h"
#include "process_usage.h"
#include "sections.h"

#include <chrono>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace tessellon::benchmarks {
namespace {

using desktop::PrivateDesktop;

constexpr int starts = 20;
constexpr Milliseconds mostForStart{100};
constexpr std::chrono::seconds idleSpan{20};
constexpr double mostWakeUpsPerSecond = 1;
constexpr double mostMegabytes = 30;

void measureStart(Report& report, PrivateDesktop& desktop) {
    desktop::Program program(desktop);
    const auto shortcutsWork = [&] {
        return desktop.x().combinationIsHeld(
            static_cast<std::uint8_t>(desktop::Key::left),
            XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4);
    };
    std::vector<Milliseconds> times;
    for (int i = 0; i <= starts; ++i) {
        const auto start = Clock::now();
        program.launch();
        const auto deadline = start + desktop::patience;
        while (!shortcutsWork()) {
            if (!program.running() || Clock::now() > deadline) {
                throw std::runtime_error("the program's shortcuts do not become active");
            }
            // Every question stops the whole server for a moment.
            std::this_thread::sleep_for(std::chrono::microseconds(500));
        }
        if (i > 0) {
            times.emplace_back(Clock::now() - start);
        }
        program.stop();
        if (!desktop::waitUntil([&] { return !shortcutsWork(); })) {
            throw std::runtime_error("the shortcuts stay active after the program's end");
        }
    }
    report.add(timeRow(
        "start of the process → shortcuts active", times, "",
        Budget{"≤ " + number(mostForStart.count(), 0) + " ms", median(times) <= mostForStart}));
}

void measureIdle(Report& report, PrivateDesktop& desktop) {
    desktop::Program program(desktop);
    program.start();
    program.waitUntilIdle();
    const pid_t process = program.process().pid();
    // What comes after the start, such as reading the list of applications, is not idling.
    waitUntilQuiet(process);
    const Usage before = usageOf(process);
    std::this_thread::sleep_for(idleSpan);
    const Usage after = usageOf(process);

    const auto seconds = static_cast<double>(idleSpan.count());
    const double perSecond = static_cast<double>(after.wakeUps - before.wakeUps) / seconds;
    const double share = 100 * (after.processorSeconds - before.processorSeconds) / seconds;
    const double megabytes = proportionalMegabytes(process);
    report.add({"wake-ups per second while idle", number(perSecond), "", "",
                Budget{"≤ " + number(mostWakeUpsPerSecond, 0), perSecond <= mostWakeUpsPerSecond}});
    report.add({"processor time while idle", number(share) + " %", "", "", std::nullopt});
    report.add({"memory (PSS)", number(megabytes, 1) + " MB", "", "",
                Budget{"≤ " + number(mostMegabytes, 0) + " MB", megabytes <= mostMegabytes}});
}

}  // namespace

void measureProcessCosts(Report& report) {
    PrivateDesktop desktop;
    desktop.startWindowManager("openbox");
    desktop.startWithWindow({"xterm"});
    report.section("The process");
    measureStart(report, desktop);
    measureIdle(report, desktop);
}

}  // namespace tessellon::benchmarks
