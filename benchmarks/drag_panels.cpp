// How long the panels of a drag take to be seen: the zone grid, its zones and the preview.
#include "sections.h"
#include "timer_process.h"

#include <array>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tessellon::benchmarks {
namespace {

/// One and a half pictures of a display that shows 60 a second.
constexpr Milliseconds mostForShow{25};
constexpr Milliseconds mostForZones{2};

constexpr std::array<Display, 4> displays{{
    {1920, 1080, true},
    {1920, 1080, false},
    {3840, 2160, true},
    {3840, 2160, false},
}};
constexpr int budgetedWidth = 1920;

struct Line {
    const char* name;
    const char* what;
};
constexpr std::array<Line, 5> lines{{
    {"grid-first", "grid, first show"},
    {"grid-again", "grid, shown again"},
    {"zone-painted", "two zones painted anew"},
    {"preview-first", "preview, first show"},
    {"preview-moved", "preview, moved and resized"},
}};

}  // namespace

void measureDragPanels(Report& report) {
    std::vector<Samples> samples;
    std::vector<std::string> columns{"median (95 %)"};
    for (const Display& display : displays) {
        samples.push_back(samplesOf(PANEL_TIMER_PATH, display));
        columns.push_back(display.description());
    }
    report.section("drag", "The panels of a drag");
    report.table("", std::move(columns));
    for (const auto& [name, what] : lines) {
        std::vector<std::string> cells{what};
        for (const Samples& measured : samples) {
            const auto& times = measured.at(name);
            cells.push_back(times.size() == 1 ? text(times.front()) : spread(times));
        }
        report.addCells(std::move(cells));
    }
    const auto judge = [&](std::size_t display, const std::string& name, const std::string& what,
                           Milliseconds most) {
        const auto& times = samples.at(display).at(name);
        report.judge(what + ", " + displays.at(display).description(), text(median(times)),
                     atMost(most, times,
                            "painting and server are the processor's work here, and 95 % of the "
                            "times are below " +
                                text(percentile(times, 0.95)) + "."));
    };
    for (std::size_t i = 0; i < displays.size(); ++i) {
        if (displays.at(i).width == budgetedWidth) {
            judge(i, "grid-again", "grid, shown again", mostForShow);
        }
        judge(i, "zone-painted", "two zones painted anew", mostForZones);
    }
    report.note(
        "From the call to the picture in the server; of zones, until it is handed over. With a "
        "compositor the zones change their colour in steps, and this is one of them. Picture and "
        "compositor are drawn by the processor here.");
}

}  // namespace tessellon::benchmarks
