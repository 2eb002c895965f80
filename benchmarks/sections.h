// The parts of the benchmark on a real desktop. Each starts desktops of its own, measures, and adds
// a section to the report. They throw when something of ours does not run; being slow is not an
// error.
#pragma once

#include "report.h"

#include <string>

namespace tessellon::benchmarks {

/// From a pressed shortcut to the window in its new frame, beside other ways of moving a window.
void measurePressToSettled(Report& report);

/// Tiling several windows beside snapping one.
void measureTiling(Report& report);

/// Listing the windows that the user sees.
void measureListing(Report& report);

/// Capturing and applying arrangements.
void measureArrangements(Report& report);

/// Showing the zone grid and the preview of a drag.
void measureDragPanels(Report& report);

/// Opening the settings window, switching its pages and dragging a slider.
void measureOwnWindows(Report& report);

/// The zone grid, the launcher and the status panel as the user sees them come, and what many of
/// them leave in memory.
void measureInterface(Report& report);

/// Starting the program, what it costs while nothing happens, and how large it is.
void measureProcessCosts(Report& report);

/// What domain_benchmark has measured, given as the JSON that it wrote.
void describeDomain(Report& report, const std::string& json);

}  // namespace tessellon::benchmarks
