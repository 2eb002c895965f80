// What the kernel tells about another process.
#pragma once

#include "platform/types.h"

#include <filesystem>
#include <optional>

namespace tessellon {

/// The program a process runs, as an absolute path with all links resolved; the path it had when it
/// was started if the file is gone since (after an upgrade, say). For a script this is the
/// interpreter. Nothing when the process is gone, is not ours to ask about, or has no real pid.
std::optional<std::filesystem::path> processExecutable(Pid pid);

}  // namespace tessellon
