// The parts of the benchmark on a real desktop. Each starts desktops of its own, measures, and adds
// a section to the report. They throw when something does not run; being slow is not an error.
#pragma once

#include "report.h"

namespace tessellon::benchmarks {

/// From a pressed shortcut to the window in its new frame, beside other ways of moving a window.
void measurePressToSettled(Report& report);

/// Listing the windows that the user sees.
void measureListing(Report& report);

/// Tiling eight windows beside snapping one.
void measureTiling(Report& report);

/// Showing the zone grid and the preview of a drag.
void measureDragPanels(Report& report);

/// Opening the settings window, switching its pages and dragging a slider.
void measureOwnWindows(Report& report);

/// Starting the program, and what it costs while nothing happens.
void measureProcessCosts(Report& report);

/// The zone grid and the launcher as the user sees them come, and what many of them leave in
/// memory.
void measureInterface(Report& report);

}  // namespace tessellon::benchmarks
