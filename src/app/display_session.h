// The display that the program is started on: whether there is one, and being its one instance.
#pragma once

#include "platform/x11/instance_lock.h"

#include <optional>

namespace tessellon {

/// What the program ends with when it cannot run.
inline constexpr int exitCannotRun = 1;

/// Whether the user works in a Wayland session, where only X11 programs' windows can be moved.
bool isWaylandSession();

/// Tells the user why there is no display to run on, and what helps.
void explainMissingDisplay();

/// Makes this the instance of its display. The exit code when another one is and stays that: it has
/// shown itself, or does not answer.
std::optional<int> takeDisplay(x11::InstanceLock& lock);

}  // namespace tessellon
