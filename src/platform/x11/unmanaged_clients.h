// Finds clients' windows that no window manager lists.
#pragma once

#include "platform/x11/connection.h"

#include <vector>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// The windows that a window manager would manage if there were one, in stacking order at each
/// level of nesting. Holds the server for the few round trips that it takes.
std::vector<xcb_window_t> clientsWithoutManager(const Connection& connection);

}  // namespace tessellon::x11
