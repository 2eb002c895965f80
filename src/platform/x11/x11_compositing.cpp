#include "platform/x11/x11_compositing.h"

#include <array>

namespace tessellon::x11 {

X11Compositing::X11Compositing(const Connection& connection)
    : connection_(connection), watch_(connection, connection.atom(Atom::compositorSelection)) {}

bool X11Compositing::isActive() const {
    return selectionOwner(connection_, connection_.atom(Atom::compositorSelection)) !=
           XCB_WINDOW_NONE;
}

void X11Compositing::preparePanel(NativeWindow window) {
    auto* const xcb = connection_.xcb();
    const auto id = static_cast<xcb_window_t>(window);
    // A client that says how wide its own shadow is gets none from the compositor.
    constexpr std::array<std::uint32_t, 4> noShadow{0, 0, 0, 0};
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, id, connection_.atom(Atom::gtkFrameExtents),
                        XCB_ATOM_CARDINAL, 32, noShadow.size(), noShadow.data());
    // Toolkits leave the background unset; the server then fills a window that is mapped with
    // whatever was there. Pixel 0 is transparent in a visual with an alpha channel.
    constexpr std::uint32_t transparent = 0;
    xcb_change_window_attributes(xcb, id, XCB_CW_BACK_PIXEL, &transparent);
    xcb_flush(xcb);
}

}  // namespace tessellon::x11
