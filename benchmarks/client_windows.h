// Many plain windows of one process, for the benchmarks that need a crowded desktop.
#pragma once

namespace tessellon::benchmarks {

/// Shows this many windows on the display that DISPLAY names and keeps them until the server or the
/// process is gone. Gives the exit code of the process that does nothing else.
int showWindows(int count);

}  // namespace tessellon::benchmarks
