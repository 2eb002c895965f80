// How long it takes to know all windows that the user sees, by the program's own adapters.
#include "crowd.h"
#include "engine/window_access.h"
#include "growth.h"
#include "harness/private_desktop.h"
#include "ports/real_desktop.h"
#include "sections.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <map>
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

constexpr std::array<std::size_t, 4> counts{10, 30, 100, 300};
constexpr int firstLooks = 11;
constexpr int looks = 51;
constexpr int commandRuns = 7;
constexpr Milliseconds mostForUnchanged{1.0};

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
};

struct Listing {
    Measured first;
    Measured unchanged;
    Measured moved;
    std::vector<Milliseconds> wmctrl;
};

Listing measureCount(std::size_t count) {
    PrivateDesktop desktop;
    desktop.startWindowManager("openbox");
    openCrowd(desktop, count);
    setenv("DISPLAY", desktop.display().c_str(), 1);

    Listing listing;
    for (int i = 0; i < firstLooks; ++i) {
        RealDesktop fresh;
        listing.first.add(fresh, count);
    }
    RealDesktop real;
    Measured warmUp;
    warmUp.add(real, count);
    for (int i = 0; i < looks; ++i) {
        listing.unchanged.add(real, count);
    }
    const xcb_window_t window = desktop.windows().managed().front();
    for (int i = 0; i < looks; ++i) {
        const Frame target{100 + i % 2 * 50, 100, 500, 400};
        if (desktop.windows().place(window, target) != target) {
            throw std::runtime_error("the window does not move");
        }
        listing.moved.add(real, count);
    }
    for (int i = 0; i < commandRuns; ++i) {
        const auto start = Clock::now();
        desktop::Process list({"wmctrl", "-lG"}, desktop.processOptions("wmctrl"));
        // Leaves the end of the process for its owner to see.
        siginfo_t end{};
        waitid(P_PID, static_cast<id_t>(list.pid()), &end, WEXITED | WNOWAIT);
        listing.wmctrl.emplace_back(Clock::now() - start);
    }
    return listing;
}

using Listings = std::map<std::size_t, Listing>;

void addRow(Report& report, const std::string& name, const Listings& listings,
            Measured Listing::*which) {
    std::vector<std::string> cells{name};
    std::map<std::size_t, std::vector<Milliseconds>> times;
    std::uint64_t roundTrips = 0;
    for (const auto& [count, listing] : listings) {
        const Measured& measured = listing.*which;
        cells.push_back(spread(measured.times));
        times.emplace(count, measured.times);
        roundTrips = std::max(roundTrips, measured.mostRoundTrips);
    }
    cells.push_back(std::to_string(roundTrips));
    cells.push_back(growth(times));
    report.addCells(std::move(cells));
}

}  // namespace

void measureListing(Report& report) {
    Listings listings;
    for (const std::size_t count : counts) {
        listings.emplace(count, measureCount(count));
    }
    report.section("listing", "Listing the visible windows");
    std::vector<std::string> columns{"median (95 %)"};
    for (const std::size_t count : counts) {
        columns.push_back(std::to_string(count) + " windows");
    }
    columns.insert(columns.end(), {"round trips", "growth"});
    report.table("", std::move(columns));
    addRow(report, "first look", listings, &Listing::first);
    addRow(report, "nothing changed", listings, &Listing::unchanged);
    addRow(report, "one window moved", listings, &Listing::moved);
    std::vector<std::string> cells{"`wmctrl -lG`"};
    std::map<std::size_t, std::vector<Milliseconds>> times;
    for (const auto& [count, listing] : listings) {
        cells.push_back(spread(listing.wmctrl));
        times.emplace(count, listing.wmctrl);
    }
    cells.emplace_back("");
    cells.push_back(growth(times));
    report.addCells(std::move(cells));

    const auto& [count, crowd] = *listings.rbegin();
    const auto& unchanged = crowd.unchanged;
    report.judge(std::to_string(count) + " windows, nothing changed",
                 text(median(unchanged.times)) +
                     ", round trips: " + std::to_string(unchanged.mostRoundTrips),
                 {"≤ " + number(mostForUnchanged.count(), 0) + " ms, 1",
                  median(unchanged.times) <= mostForUnchanged && unchanged.mostRoundTrips == 1,
                  "the first look takes " + text(median(crowd.first.times)) + "."});
}

}  // namespace tessellon::benchmarks
