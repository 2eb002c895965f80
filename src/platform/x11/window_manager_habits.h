// What single window managers do otherwise than the rest, as far as the program has to mind it.
#pragma once

#include "platform/x11/connection.h"

#include <cstdint>
#include <optional>
#include <string_view>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// How a window is brought out of a tile that the window manager keeps it in.
enum class TileRelease : std::uint8_t {
    notNeeded,
    byMaximizing,  // and taking that back: the tile is forgotten with it
    byDragging,    // whatever state is taken from it
};

/// As they are by default, most window managers are.
struct WindowManagerHabits {
    // Frames.
    bool announcesFrameWidths = true;     // else they are measured
    bool positionsMeanTheClient = false;  // else the corner of the frame
    bool pullsInResizedWindows = false;   // that hang out of the screen, without a position
    TileRelease tileRelease = TileRelease::notNeeded;

    // What is where.
    bool listsDocks = true;  // among the windows that it manages
    bool hasDesktopPerMonitor = false;

    // Drags.
    bool ignoresCommandPress = false;  // of a title bar
    bool forgetsMoveRequests = false;  // now and then
    bool keepsSizeWhileDragging = false;

    // Keys.
    bool replaysKeysAfterCommand = false;  // past the grabs on the root

    bool operator==(const WindowManagerHabits&) const = default;
};

/// The habits of the window manager that gives itself this name (_NET_WM_NAME).
WindowManagerHabits habitsOf(std::string_view windowManagerName);

/// The habits of the window manager that announces itself with this window; nothing when it is not
/// alive, since then the window is gone or does not name itself. One round trip.
std::optional<WindowManagerHabits> readHabits(const Connection& connection,
                                              xcb_window_t checkWindow);

}  // namespace tessellon::x11
