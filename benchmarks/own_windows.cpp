// How long the settings window takes: until it is there, to another page, and to follow a slider.
#include "sections.h"
#include "timer_process.h"

#include <string>
#include <utility>

namespace tessellon::benchmarks {
namespace {

constexpr Milliseconds mostForOpening{150};
constexpr Milliseconds mostForPage{16};

/// One picture of a display that shows 60 a second.
constexpr Milliseconds mostForSlider{16.7};

}  // namespace

void measureOwnWindows(Report& report) {
    report.section("The settings window, 1920 × 1080, under a compositor");
    for (const auto& [name, times] : samplesOf(WINDOW_TIMER_PATH)) {
        const auto most = name == "first opening"    ? mostForOpening
                          : name == "slider follows" ? mostForSlider
                                                     : mostForPage;
        report.add(timeRow(name, times, "", Budget{"≤ " + text(most), median(times) <= most}));
    }
    report.note(
        "From the call or the motion to the picture in the server. The opening is the first in its "
        "process, with everything that the toolkit loads for it. Pictures are drawn by the "
        "processor here.");
}

}  // namespace tessellon::benchmarks
