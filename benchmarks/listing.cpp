// How long it takes to know all windows that the user sees, by the program's own adapters.
#include "contenders.h"
#include "engine/window_access.h"
#include "harness/private_desktop.h"
#include "harness/wait.h"
#include "ports/real_desktop.h"
#include "sections.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <sys/wait.h>

namespace tessellon::benchmarks {
namespace {

using desktop::Frame;
using desktop::PrivateDesktop;
using desktop::RealDesktop;

constexpr int processes = 5;
constexpr int firstLooks = 11;
constexpr int looks = 51;
constexpr Milliseconds mostForUnchanged{1.0};
constexpr std::size_t crowd = 300;

struct Measured {
    std::vector<Milliseconds> times;
    std::uint64_t mostRoundTrips = 0;

    void add(RealDesktop& real, std::size_t expected) {
        const WindowAccess windows(real.services());
        const auto roundTrips = real.roundTrips();
        const auto start = Clock::now();
        const auto visible = windows.orderedVisibleWindows();
        times.emplace_back(Clock::now() - start);
        mostRoundTrips = std::max(mostRoundTrips, real.roundTrips() - roundTrips);
        if (visible.size() != expected) {
            throw std::runtime_error("saw " + std::to_string(visible.size()) + " windows of " +
                                     std::to_string(expected));
        }
    }

    std::string described() const {
        return std::to_string(mostRoundTrips) +
               (mostRoundTrips == 1 ? " round trip" : " round trips");
    }
};

void openWindows(PrivateDesktop& desktop, std::size_t count) {
    const auto self = std::filesystem::read_symlink("/proc/self/exe").string();
    for (int i = 0; i < processes; ++i) {
        const std::size_t share = count / processes;
        desktop.start({self, "--show-windows", std::to_string(share)});
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

void measureCount(Report& report, std::size_t count) {
    PrivateDesktop desktop;
    desktop.startWindowManager("openbox");
    openWindows(desktop, count);
    setenv("DISPLAY", desktop.display().c_str(), 1);

    Measured first;
    for (int i = 0; i < firstLooks; ++i) {
        RealDesktop fresh;
        first.add(fresh, count);
    }
    RealDesktop real;
    Measured warmUp;
    warmUp.add(real, count);
    Measured unchanged;
    for (int i = 0; i < looks; ++i) {
        unchanged.add(real, count);
    }
    Measured moved;
    const xcb_window_t window = desktop.windows().managed().front();
    for (int i = 0; i < looks; ++i) {
        const Frame target{100 + i % 2 * 50, 100, 500, 400};
        if (desktop.windows().place(window, target) != target) {
            throw std::runtime_error("the window does not move");
        }
        moved.add(real, count);
    }
    std::vector<Milliseconds> listed;
    for (int i = 0; i < firstLooks; ++i) {
        const auto start = Clock::now();
        desktop::Process list({"wmctrl", "-lG"}, desktop.processOptions("wmctrl"));
        // Leaves the end of the process for its owner to see.
        siginfo_t end{};
        waitid(P_PID, static_cast<id_t>(list.pid()), &end, WEXITED | WNOWAIT);
        listed.emplace_back(Clock::now() - start);
    }

    const auto name = std::to_string(count) + " windows, ";
    const auto times = [&](const Measured& measured) {
        return number(median(listed) / median(measured.times), 0) + " × faster than wmctrl -lG; " +
               measured.described();
    };
    report.add(timeRow(name + "first look", first.times, times(first)));
    std::optional<Budget> budget;
    if (count == crowd) {
        budget = {"≤ " + text(mostForUnchanged) + ", 1 round trip",
                  median(unchanged.times) <= mostForUnchanged && unchanged.mostRoundTrips == 1};
    }
    report.add(timeRow(name + "nothing changed", unchanged.times, times(unchanged), budget));
    report.add(timeRow(name + "one window moved", moved.times, times(moved)));
    report.add(timeRow(name + "wmctrl -lG", listed));
}

}  // namespace

void measureListing(Report& report) {
    report.section("Listing the visible windows");
    for (const std::size_t count : {std::size_t{10}, std::size_t{100}, crowd}) {
        measureCount(report, count);
    }
}

}  // namespace tessellon::benchmarks
