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
    const auto samples = samplesOf(WINDOW_TIMER_PATH);
    report.section("windows", "The settings window");
    report.table("");
    for (const auto& [name, times] : samples) {
        const auto most = name == "first opening"    ? mostForOpening
                          : name == "slider follows" ? mostForSlider
                                                     : mostForPage;
        report.add(
            timeRow(name, times, "",
                    atMost(most, times,
                           "95 % of the times are below " + text(percentile(times, 0.95)) + ".")));
    }
    report.note("On " + Display{}.description() +
                ". From the call or the motion to the picture in the server. The opening is the "
                "first in its "
                "process, with everything that the toolkit loads for it. Pictures are drawn by the "
                "processor here.");
}

}  // namespace tessellon::benchmarks
