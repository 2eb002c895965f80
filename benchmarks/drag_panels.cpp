// How long the panels of a drag take to be seen: the zone grid, its zones and the preview.
#include "harness/private_desktop.h"
#include "sections.h"

#include <chrono>
#include <map>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessellon::benchmarks {
namespace {

constexpr Milliseconds mostForShow{25};
constexpr Milliseconds mostForZones{2};

using Samples = std::map<std::string, std::vector<Milliseconds>>;

Samples timePanels() {
    desktop::PrivateDesktop desktop;
    desktop.startWindowManager("openbox");
    desktop.startCompositor();
    auto options = desktop.processOptions("panel_timer");
    desktop::Process timer({PANEL_TIMER_PATH}, options);
    constexpr std::chrono::seconds enough{60};
    const auto end = timer.waitForEnd(enough);
    if (!end || end->exitCode != 0) {
        throw std::runtime_error("panel_timer failed: " +
                                 desktop::fileContents(options.standardError.value_or("")));
    }
    Samples samples;
    std::istringstream lines(desktop::fileContents(options.standardOutput.value_or("")));
    std::string name;
    double milliseconds = 0;
    while (lines >> name >> milliseconds) {
        samples[name].emplace_back(milliseconds);
    }
    return samples;
}

}  // namespace

void measureDragPanels(Report& report) {
    const auto samples = timePanels();
    const auto row = [&](const std::string& name, std::string what,
                         std::optional<Milliseconds> most) {
        const auto& times = samples.at(name);
        std::optional<Budget> budget;
        if (most) {
            budget = {"≤ " + text(*most), median(times) <= *most};
        }
        report.add(timeRow(std::move(what), times, "", budget));
    };
    report.section("The panels of a drag, 1920 × 1080, under a compositor");
    row("grid-first", "grid, first show", std::nullopt);
    row("grid-again", "grid, shown again", mostForShow);
    row("zone-painted", "two zones painted anew", mostForZones);
    row("preview-first", "preview, first show", std::nullopt);
    row("preview-moved", "preview, moved and resized", std::nullopt);
    report.note(
        "From the call to the picture in the server; of zones, until it is handed over. Picture "
        "and "
        "compositor are drawn by the processor here.");
}

}  // namespace tessellon::benchmarks
