// How long the settings window takes: until it is there, and to another page.
#include "sections.h"
#include "timer_process.h"

#include <string>
#include <utility>

namespace tessellon::benchmarks {
namespace {

constexpr Milliseconds mostForOpening{150};
constexpr Milliseconds mostForPage{16};

}  // namespace

void measureOwnWindows(Report& report) {
    report.section("The settings window, 1920 × 1080, under a compositor");
    for (const auto& [name, times] : samplesOf(WINDOW_TIMER_PATH)) {
        const auto most = name == "first opening" ? mostForOpening : mostForPage;
        report.add(timeRow(name, times, "", Budget{"≤ " + text(most), median(times) <= most}));
    }
    report.note(
        "From the call to the picture in the server. The opening is the first in its "
        "process, with everything that the toolkit loads for it. Pictures are drawn by the "
        "processor here.");
}

}  // namespace tessellon::benchmarks
