// The X atoms that the program uses, interned together when the connection opens.
#pragma once

#include <array>
#include <cstddef>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// EWMH and ICCCM names unless the comment says otherwise.
enum class Atom : std::size_t {
    wmState,
    wmClientMachine,
    netSupportingWmCheck,
    netClientList,
    netActiveWindow,
    netCurrentDesktop,
    netWorkarea,
    netMoveresizeWindow,
    netWmMoveresize,
    netFrameExtents,
    gtkFrameExtents,   // widths of the invisible shadow of client-side decorations (GTK, Qt)
    gtkApplicationId,  // GTK
    netWmName,
    netWmPid,
    netWmDesktop,
    netWmStrut,
    netWmStrutPartial,
    netWmState,
    netWmStateMaximizedVert,
    netWmStateMaximizedHorz,
    netWmStateFullscreen,
    netWmStateHidden,
    netWmStateShaded,
    netWmWindowType,
    netWmWindowTypeNormal,
    netWmWindowTypeDialog,
    netWmWindowTypeUtility,
    netWmWindowTypeToolbar,
    netWmWindowTypeMenu,
    netWmWindowTypeSplash,
    netWmWindowTypeDropdownMenu,
    netWmWindowTypePopupMenu,
    netWmWindowTypeTooltip,
    netWmWindowTypeNotification,
    netWmWindowTypeCombo,
    netWmWindowTypeDnd,
    netWmWindowTypeDock,
    netWmWindowTypeDesktop,
    edid,  // RandR output property
    utf8String,
    manager,
    netSystemTrayOpcode,  // these three: System Tray Protocol
    netSystemTrayVisual,
    netSystemTrayColors,
    xembedInfo,  // XEmbed
    compositorSelection,
    instanceSelection,  // held by the one running instance of this program on the display
    count,
};

class Atoms {
  public:
    /// Interns all of them in one round trip.
    explicit Atoms(xcb_connection_t* connection);

    xcb_atom_t operator[](Atom name) const { return values_[static_cast<std::size_t>(name)]; }

  private:
    std::array<xcb_atom_t, static_cast<std::size_t>(Atom::count)> values_{};
};

}  // namespace tessellon::x11
