#include "platform/x11/instance_lock.h"

namespace tessellon::x11 {

InstanceLock::InstanceLock(Connection& connection) : connection_(connection) {}

InstanceLock::~InstanceLock() {
    if (window_ != XCB_WINDOW_NONE) {
        xcb_destroy_window(connection_.xcb(), window_);
    }
}

bool InstanceLock::acquire() {
    auto* const xcb = connection_.xcb();
    const auto selection = connection_.atom(Atom::instanceSelection);
    window_ = xcb_generate_id(xcb);
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window_, connection_.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    const auto owner = [&] {
        connection_.countRoundTrip();
        const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
            xcb, xcb_get_selection_owner_unchecked(xcb, selection), nullptr));
        return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
    };
    // The server is held, so that two instances that start together cannot both find it free.
    xcb_grab_server(xcb);
    const bool isFree = owner() == XCB_WINDOW_NONE;
    if (isFree) {
        xcb_set_selection_owner(xcb, window_, selection, XCB_CURRENT_TIME);
    }
    xcb_ungrab_server(xcb);
    return isFree && owner() == window_;
}

}  // namespace tessellon::x11
