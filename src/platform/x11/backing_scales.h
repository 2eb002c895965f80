// How many pixels of each display show one point of the desktop. RandR can scale what a display
// shows: its part of the desktop is then larger or smaller than its mode.
#pragma once

#include "base/geometry.h"

#include <cstdint>
#include <map>

#include <xcb/randr.h>

namespace tessellon::x11 {

/// The scale of a display that shows `area`, a part of the desktop, in a mode of `mode` pixels;
/// `rotation` is RandR's. 1 where either is empty.
Size backingScale(const Size& mode, std::uint16_t rotation, const Size& area);

/// The scales by output, in one round trip; outputs that show nothing are not among them.
std::map<xcb_randr_output_t, Size> backingScales(
    xcb_connection_t* xcb, const xcb_randr_get_screen_resources_current_reply_t& resources);

}  // namespace tessellon::x11
