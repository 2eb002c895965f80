// Putting windows back where an arrangement has them.
#pragma once

#include "arrangements/arrangement.h"
#include "engine/window_engine.h"

namespace tessellon {

/// Moves one open window for each placement: of the same application, with the same title if there
/// is one. Placements without a window are passed over; nothing is launched. Moved windows can be
/// restored like snapped ones, and the next shortcut starts a cycle anew. Does nothing while
/// snapping is paused or without displays.
void applyArrangement(WindowEngine& engine, const Arrangement& arrangement);

}  // namespace tessellon
