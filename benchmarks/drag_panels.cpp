// How long the panels of a drag take to be seen: the zone grid, its zones and the preview.
#include "sections.h"
#include "timer_process.h"

#include <optional>
#include <string>
#include <utility>

namespace tessellon::benchmarks {
namespace {

constexpr Milliseconds mostForShow{25};
constexpr Milliseconds mostForZones{2};

}  // namespace

void measureDragPanels(Report& report) {
    const auto samples = samplesOf(PANEL_TIMER_PATH);
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
