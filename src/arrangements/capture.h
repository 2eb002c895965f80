// Recording where the user's windows are.
#pragma once

#include "arrangements/arrangement.h"
#include "engine/window_engine.h"

#include <optional>
#include <string>

namespace tessellon {

/// An arrangement of every visible window that may be moved, front-most first. Nothing when there
/// is no such window. Also works while snapping is paused.
std::optional<Arrangement> captureArrangement(WindowEngine& engine, std::string name);

}  // namespace tessellon
