#include "platform/x11/atoms.h"

#include "platform/x11/reply.h"

#include <string_view>

namespace tessellon::x11 {
namespace {

constexpr std::array<std::string_view, static_cast<std::size_t>(Atom::count)> atomNames{
    "WM_STATE",
    "WM_CLIENT_MACHINE",
    "_NET_SUPPORTING_WM_CHECK",
    "_NET_CLIENT_LIST",
    "_NET_ACTIVE_WINDOW",
    "_NET_CURRENT_DESKTOP",
    "_NET_WORKAREA",
    "_NET_MOVERESIZE_WINDOW",
    "_NET_WM_MOVERESIZE",
    "_NET_FRAME_EXTENTS",
    "_GTK_FRAME_EXTENTS",
    "_GTK_APPLICATION_ID",
    "_NET_WM_NAME",
    "_NET_WM_PID",
    "_NET_WM_DESKTOP",
    "_NET_WM_STRUT",
    "_NET_WM_STRUT_PARTIAL",
    "_NET_WM_STATE",
    "_NET_WM_STATE_MAXIMIZED_VERT",
    "_NET_WM_STATE_MAXIMIZED_HORZ",
    "_NET_WM_STATE_FULLSCREEN",
    "_NET_WM_STATE_HIDDEN",
    "_NET_WM_STATE_SHADED",
    "_NET_WM_WINDOW_TYPE",
    "_NET_WM_WINDOW_TYPE_NORMAL",
    "_NET_WM_WINDOW_TYPE_DIALOG",
    "_NET_WM_WINDOW_TYPE_UTILITY",
    "_NET_WM_WINDOW_TYPE_TOOLBAR",
    "_NET_WM_WINDOW_TYPE_MENU",
    "_NET_WM_WINDOW_TYPE_SPLASH",
    "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
    "_NET_WM_WINDOW_TYPE_POPUP_MENU",
    "_NET_WM_WINDOW_TYPE_TOOLTIP",
    "_NET_WM_WINDOW_TYPE_NOTIFICATION",
    "_NET_WM_WINDOW_TYPE_COMBO",
    "_NET_WM_WINDOW_TYPE_DND",
    "_NET_WM_WINDOW_TYPE_DOCK",
    "_NET_WM_WINDOW_TYPE_DESKTOP",
    "EDID",
    "UTF8_STRING",
    "MANAGER",
    "_NET_SYSTEM_TRAY_OPCODE",
    "_NET_SYSTEM_TRAY_VISUAL",
    "_NET_SYSTEM_TRAY_COLORS",
    "_XEMBED_INFO",
    "_NET_WM_CM_S0",
    "_TESSELLON_S0",
};
static_assert(!atomNames.back().empty(), "every atom needs its name");

}  // namespace

Atoms::Atoms(xcb_connection_t* connection) {
    std::array<xcb_intern_atom_cookie_t, atomNames.size()> cookies{};
    for (std::size_t i = 0; i < atomNames.size(); ++i) {
        cookies[i] = xcb_intern_atom_unchecked(
            connection, 0, static_cast<std::uint16_t>(atomNames[i].size()), atomNames[i].data());
    }
    for (std::size_t i = 0; i < atomNames.size(); ++i) {
        const Reply<xcb_intern_atom_reply_t> reply(
            xcb_intern_atom_reply(connection, cookies[i], nullptr));
        values_[i] = reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }
}

}  // namespace tessellon::x11
