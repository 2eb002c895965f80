// Starting another program that lives on by itself.
#pragma once

#include <string>
#include <vector>

namespace tessellon {

/// Starts a program, found on PATH unless its path is given, and does not wait for it; it is in a
/// session of its own, is not heard on this program's output, and outlives it. False when there is
/// no such program or it cannot be run.
bool startDetached(const std::vector<std::string>& words);

}  // namespace tessellon
