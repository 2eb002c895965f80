#include "platform/x11/selection_watch.h"

#include "platform/x11/reply.h"

#include <xcb/xfixes.h>

namespace tessellon::x11 {

xcb_window_t selectionOwner(const Connection& connection, xcb_atom_t selection) {
    connection.countRoundTrip();
    const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection.xcb(), xcb_get_selection_owner_unchecked(connection.xcb(), selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

// The server's own events leave out a selection that is lost because its owner died.
SelectionWatch::SelectionWatch(const Connection& connection, xcb_atom_t selection)
    : connection_(connection) {
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
    xcb_xfixes_select_selection_input(xcb, connection_.root(), selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    xcb_flush(xcb);
    const auto notify =
        static_cast<std::uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    listener_ = connection_.addActionListener([this, notify, selection](const auto& event) {
        if (eventType(event) == notify &&
            eventAs<xcb_xfixes_selection_notify_event_t>(event).selection == selection) {
            changed_.emit();
        }
    });
}

}  // namespace tessellon::x11
