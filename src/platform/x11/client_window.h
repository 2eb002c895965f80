// What the mirror knows of one client's window.
#pragma once

#include "base/geometry.h"
#include "platform/types.h"
#include "platform/x11/properties.h"

#include <cstdint>
#include <optional>
#include <string>

#include <xcb/xcb.h>

namespace tessellon::x11 {

enum class WindowKind : std::uint8_t {
    standard,  // an ordinary window of an application
    dialog,
    floating,  // utility windows, torn-off tool bars and menus
    passing,   // open menus, tooltips, notifications, things being dragged
    splash,
    dock,
    desktop,
};

struct ClientWindow {
    xcb_window_t id = XCB_WINDOW_NONE;
    /// Differs from every other window's that had the same id.
    std::uint64_t generation = 0;
    /// In the window manager's list of clients.
    bool managed = false;
    /// The window's ancestor that is a child of the root, or the window itself.
    xcb_window_t topLevel = XCB_WINDOW_NONE;

    // Geometry, in root coordinates.
    bool hasGeometry = false;
    bool viewable = false;
    Rect client;                    // outside of the client's own border
    std::optional<Extents> frame;   // _NET_FRAME_EXTENTS
    std::optional<Extents> shadow;  // _GTK_FRAME_EXTENTS
    std::int32_t border = 0;        // the client's own border
    SizeHints hints;

    // Properties.
    std::string title;
    WindowClass windowClass;
    std::string gtkApplicationId;
    WindowKind kind = WindowKind::standard;
    Pid pid = 0;
    std::optional<std::uint32_t> desktop;
    std::optional<Strut> strut;
    bool maximizedVert = false;
    bool maximizedHorz = false;
    bool fullScreen = false;
    bool hiddenState = false;  // _NET_WM_STATE_HIDDEN
    bool iconic = false;       // WM_STATE
    bool shaded = false;

    /// What the user sees of the window: decorations in, shadow out.
    Rect visibleFrame() const {
        const Extents outer = frame.value_or(Extents{});
        const Extents inner = shadow.value_or(Extents{});
        return {client.x - outer.left + inner.left, client.y - outer.top + inner.top,
                client.width + outer.left + outer.right - inner.left - inner.right,
                client.height + outer.top + outer.bottom - inner.top - inner.bottom};
    }
};

}  // namespace tessellon::x11
