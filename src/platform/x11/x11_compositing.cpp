#include "platform/x11/x11_compositing.h"

#include "platform/x11/reply.h"

#include <array>

#include <xcb/xfixes.h>

namespace tessellon::x11 {

X11Compositing::X11Compositing(const Connection& connection) : connection_(connection) {
    watchSelection();
    listener_ = connection_.addActionListener([this](const auto& event) {
        if (selectionNotify_ != 0 && eventType(event) == selectionNotify_ &&
            eventAs<xcb_xfixes_selection_notify_event_t>(event).selection ==
                connection_.atom(Atom::compositorSelection)) {
            changed_.emit();
        }
    });
}

/// The server's own events leave out a selection that is lost because its owner died.
void X11Compositing::watchSelection() {
    auto* const xcb = connection_.xcb();
    const auto* extension = xcb_get_extension_data(xcb, &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0) {
        return;
    }
    // The extension refuses everything before it was told a version.
    connection_.countRoundTrip();
    const Reply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        xcb, xcb_xfixes_query_version_unchecked(xcb, 1, 0), nullptr));
    if (!version) {
        return;
    }
    selectionNotify_ =
        static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    xcb_xfixes_select_selection_input(xcb, connection_.root(),
                                      connection_.atom(Atom::compositorSelection),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    xcb_flush(xcb);
}

bool X11Compositing::isActive() const {
    auto* const xcb = connection_.xcb();
    connection_.countRoundTrip();
    const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        xcb, xcb_get_selection_owner_unchecked(xcb, connection_.atom(Atom::compositorSelection)),
        nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
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
