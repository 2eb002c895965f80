#include "platform/x11/instance_lock.h"

#include "platform/x11/selection_watch.h"

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
    if (window_ == XCB_WINDOW_NONE) {
        window_ = xcb_generate_id(xcb);
        xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window_, connection_.root(), -1, -1, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    }
    // The server is held, so that two instances that start together cannot both find it free.
    xcb_grab_server(xcb);
    const bool isFree = owner() == XCB_WINDOW_NONE;
    if (isFree) {
        xcb_set_selection_owner(xcb, window_, selection, XCB_CURRENT_TIME);
    }
    xcb_ungrab_server(xcb);
    if (!isFree || owner() != window_) {
        return false;
    }
    questions_ =
        connection_.addActionListener([this](const xcb_generic_event_t& event) { answer(event); });
    return true;
}

xcb_window_t InstanceLock::owner() const {
    return selectionOwner(connection_, connection_.atom(Atom::instanceSelection));
}

// Question and answer are the same message, which names the window of whoever sends it.
void InstanceLock::send(xcb_window_t to, xcb_window_t from) const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = to;
    message.type = connection_.atom(Atom::instanceSelection);
    message.data.data32[0] = from;
    xcb_send_event(connection_.xcb(), 0, to, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
}

bool InstanceLock::askHolder(Seconds limit) {
    const auto holder = owner();
    if (holder == XCB_WINDOW_NONE || holder == window_) {
        return false;
    }
    bool hasAnswered = false;
    bool isGone = false;
    const Token listening = connection_.addStateListener([&](const xcb_generic_event_t& event) {
        if (eventType(event) == XCB_DESTROY_NOTIFY) {
            isGone = isGone || eventAs<xcb_destroy_notify_event_t>(event).window == holder;
        } else if (eventType(event) == XCB_CLIENT_MESSAGE) {
            const auto& message = eventAs<xcb_client_message_event_t>(event);
            hasAnswered =
                hasAnswered || (message.window == window_ && message.format == 32 &&
                                message.type == connection_.atom(Atom::instanceSelection) &&
                                message.data.data32[0] == holder);
        }
    });
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.xcb(), holder, XCB_CW_EVENT_MASK, &events);
    send(holder, window_);
    // A holder that ended before its events were asked for is told of by nothing but the selection.
    isGone = owner() != holder;
    connection_.pullUntil([&] { return hasAnswered || isGone; }, limit);
    return hasAnswered;
}

void InstanceLock::answer(const xcb_generic_event_t& event) {
    if (eventType(event) != XCB_CLIENT_MESSAGE) {
        return;
    }
    const auto& message = eventAs<xcb_client_message_event_t>(event);
    if (message.window != window_ || message.format != 32 ||
        message.type != connection_.atom(Atom::instanceSelection)) {
        return;
    }
    send(message.data.data32[0], window_);
    xcb_flush(connection_.xcb());
    asked_.emit();
}

}  // namespace tessellon::x11
