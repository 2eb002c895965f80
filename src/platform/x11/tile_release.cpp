#include "platform/x11/tile_release.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace tessellon::x11 {
namespace {

constexpr std::uint32_t sourcePager = 2;  // EWMH: a tool acting for the user
constexpr std::uint32_t stateRemove = 0;
constexpr std::uint32_t stateAdd = 1;

// Directions of _NET_WM_MOVERESIZE (EWMH).
constexpr std::uint32_t beginMove = 8;
constexpr std::uint32_t cancelMove = 11;
constexpr std::uint32_t leftButton = 1;

// Pixels. Metacity lets a tiled window go when it is dragged six times as far as the threshold of a
// drag, which is 8 unless somebody set it.
constexpr std::int32_t pull = 400;

/// KWin forgets the tile when the window is maximised in any direction. It has read both messages
/// before it draws anything.
void passThroughMaximized(const Connection& connection, xcb_window_t window) {
    const std::uint32_t vertically = connection.atom(Atom::netWmStateMaximizedVert);
    for (const std::uint32_t change : {stateAdd, stateRemove}) {
        connection.sendToWindowManager(window, Atom::netWmState,
                                       {change, vertically, 0, sourcePager, 0});
    }
}

/// Metacity tiles a window again whatever state is taken from it, until it is dragged away. So it
/// gets a drag, with a motion that is sent to it alone: the pointer stays where it is.
void pullAway(const Connection& connection, xcb_window_t window, const Rect& wanted) {
    const auto coordinate = [](double value) {
        return static_cast<std::int16_t>(std::clamp(std::round(value), 0.0, 32767.0));
    };
    // In the middle of where the window will be, which is at no edge that it would be tiled at.
    const std::int16_t x = coordinate(wanted.x + wanted.width / 2);
    const std::int16_t y = coordinate(wanted.y + wanted.height / 2);
    const auto move = [&](std::uint32_t what) {
        connection.sendToWindowManager(
            window, Atom::netWmMoveresize,
            {static_cast<std::uint32_t>(x + pull), static_cast<std::uint32_t>(y + pull), what,
             leftButton, sourcePager});
    };
    // It begins no move while somebody else has the keyboard, and that is us for as long as the key
    // of a shortcut is held.
    xcb_ungrab_keyboard(connection.xcb(), XCB_CURRENT_TIME);
    move(beginMove);
    xcb_motion_notify_event_t motion{};
    motion.response_type = XCB_MOTION_NOTIFY;
    motion.root = connection.root();
    motion.event = window;
    motion.root_x = motion.event_x = x;
    motion.root_y = motion.event_y = y;
    motion.state = XCB_BUTTON_MASK_1;
    motion.same_screen = 1;
    // Only a window manager can have selected this on the root.
    xcb_send_event(connection.xcb(), 0, connection.root(), XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&motion));
    move(cancelMove);
}

}  // namespace

bool releaseFromTile(const Connection& connection, TileRelease way, const ClientWindow& window,
                     const Rect& wanted) {
    if (window.fullScreen || window.hiddenState || window.iconic) {
        return false;
    }
    switch (way) {
        case TileRelease::notNeeded:
            break;
        case TileRelease::byMaximizing:
            passThroughMaximized(connection, window.id);
            return true;
        case TileRelease::byDragging:
            // Such tiles are what is left maximised although we took that away.
            if (window.maximizedVert) {
                pullAway(connection, window.id, wanted);
                return true;
            }
            break;
    }
    return false;
}

}  // namespace tessellon::x11
