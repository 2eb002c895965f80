// Finds clients' windows that no window manager lists.
#pragma once

#include "platform/x11/connection.h"

#include <vector>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// The windows that a window manager would manage if there were one, in stacking order at each
/// level of nesting. Holds the server for the few round trips that it takes.
std::vector<xcb_window_t> clientsWithoutManager(const Connection& connection);

/// Those of the windows that are docks or keep room at an edge of the screen. One round trip.
std::vector<xcb_window_t> docksAmong(const Connection& connection,
                                     const std::vector<xcb_window_t>& windows);

}  // namespace tessellon::x11
