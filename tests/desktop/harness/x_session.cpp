#include "harness/x_session.h"

#include <stdexcept>

#include <xcb/res.h>

namespace tessellon::desktop {

XSession::XSession(const std::string& display) {
    int number = 0;
    connection_ = xcb_connect(display.c_str(), &number);
    if (xcb_connection_has_error(connection_) != 0) {
        xcb_disconnect(connection_);
        throw std::runtime_error("no X server on display " + display);
    }
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection_));
    for (; number > 0; --number) {
        xcb_screen_next(&screens);
    }
    screen_ = screens.data;
    ownWindow_ = xcb_generate_id(connection_);
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, ownWindow_, root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    sync();
}

XSession::~XSession() {
    xcb_disconnect(connection_);
}

std::uint16_t XSession::width() const {
    const Reply<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, root()), nullptr));
    return reply ? reply->width : screen_->width_in_pixels;
}

std::uint16_t XSession::height() const {
    const Reply<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, root()), nullptr));
    return reply ? reply->height : screen_->height_in_pixels;
}

xcb_atom_t XSession::atom(std::string_view name) {
    if (const auto known = atoms_.find(name); known != atoms_.end()) {
        return known->second;
    }
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    const xcb_atom_t result = reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    atoms_.emplace(name, result);
    return result;
}

namespace {

constexpr std::uint32_t longestProperty = 1U << 16U;

Reply<xcb_get_property_reply_t> readProperty(xcb_connection_t* connection, xcb_window_t window,
                                             xcb_atom_t property) {
    return Reply<xcb_get_property_reply_t>(
        xcb_get_property_reply(connection,
                               xcb_get_property(connection, 0, window, property,
                                                XCB_GET_PROPERTY_TYPE_ANY, 0, longestProperty),
                               nullptr));
}

}  // namespace

std::vector<std::uint32_t> XSession::values(xcb_window_t window, std::string_view property) {
    const auto reply = readProperty(connection_, window, atom(property));
    if (!reply || reply->format != 32) {
        return {};
    }
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

std::string XSession::bytes(xcb_window_t window, std::string_view property) {
    const auto reply = readProperty(connection_, window, atom(property));
    if (!reply || reply->format != 8) {
        return {};
    }
    const auto* first = static_cast<const char*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

void XSession::setValues(xcb_window_t window, std::string_view property, std::string_view type,
                         const std::vector<std::uint32_t>& values) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window, atom(property), atom(type), 32,
                        static_cast<std::uint32_t>(values.size()), values.data());
}

void XSession::setBackground(std::uint32_t colour) {
    const xcb_pixmap_t pixmap = xcb_generate_id(connection_);
    const xcb_gcontext_t context = xcb_generate_id(connection_);
    constexpr xcb_rectangle_t whole{0, 0, 1, 1};
    xcb_create_pixmap(connection_, screen_->root_depth, pixmap, root(), whole.width, whole.height);
    xcb_create_gc(connection_, context, pixmap, XCB_GC_FOREGROUND, &colour);
    xcb_poly_fill_rectangle(connection_, pixmap, context, 1, &whole);
    xcb_free_gc(connection_, context);
    xcb_change_window_attributes(connection_, root(), XCB_CW_BACK_PIXMAP, &pixmap);
    xcb_clear_area(connection_, 0, root(), 0, 0, 0, 0);
    // Where compositors look for it, by a convention as old as the first of them. The pixmap lives
    // as long as this session.
    setValues(root(), "_XROOTPMAP_ID", "PIXMAP", {pixmap});
    sync();
}

bool XSession::exists(xcb_window_t window) {
    const Reply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        connection_, xcb_get_window_attributes(connection_, window), nullptr));
    return reply != nullptr;
}

xcb_window_t XSession::selectionOwner(std::string_view selection) {
    const Reply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection_, xcb_get_selection_owner(connection_, atom(selection)), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

void XSession::tellRoot(xcb_window_t window, std::string_view message,
                        const std::array<std::uint32_t, 5>& data) {
    xcb_client_message_event_t event{};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = atom(message);
    for (std::size_t i = 0; i < data.size(); ++i) {
        event.data.data32[i] = data[i];
    }
    xcb_send_event(connection_, 0, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&event));
    sync();
}

bool XSession::windowManagerRuns() {
    // The root's property outlives a window manager that was killed; its window does not.
    const auto check = values(root(), "_NET_SUPPORTING_WM_CHECK");
    return !check.empty() && values(check.front(), "_NET_SUPPORTING_WM_CHECK") == check;
}

bool XSession::windowManagerServes() {
    const Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, ownWindow_), nullptr));
    const bool answered = askedX_ > 0 && geometry && geometry->x == askedX_;
    // Requests to configure a window that is not mapped are passed to the window manager all the
    // same, and it passes them on.
    const auto x = static_cast<std::uint32_t>(++askedX_);
    xcb_configure_window(connection_, ownWindow_, XCB_CONFIG_WINDOW_X, &x);
    xcb_flush(connection_);
    return answered;
}

xcb_timestamp_t XSession::serverTime() {
    sync();
    setValues(ownWindow_, "_TESSELLON_TEST_TIME", "CARDINAL", {0});
    xcb_flush(connection_);
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection_)}) {
        if ((event->response_type & 0x7FU) == XCB_PROPERTY_NOTIFY) {
            return reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->time;
        }
    }
    return XCB_CURRENT_TIME;
}

bool XSession::combinationIsHeld(std::uint8_t keyCode, std::uint16_t modifiers) {
    xcb_grab_server(connection_);
    const Reply<xcb_generic_error_t> refusal(xcb_request_check(
        connection_, xcb_grab_key_checked(connection_, 0, root(), modifiers, keyCode,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC)));
    if (!refusal) {
        xcb_ungrab_key(connection_, keyCode, root(), modifiers);
    }
    xcb_ungrab_server(connection_);
    sync();
    return refusal && refusal->error_code == XCB_ACCESS;
}

std::optional<std::int32_t> XSession::processOf(xcb_window_t window) {
    const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const Reply<xcb_res_query_client_ids_reply_t> reply(xcb_res_query_client_ids_reply(
        connection_, xcb_res_query_client_ids(connection_, 1, &spec), nullptr));
    if (!reply) {
        return std::nullopt;
    }
    for (auto id = xcb_res_query_client_ids_ids_iterator(reply.get()); id.rem > 0;
         xcb_res_client_id_value_next(&id)) {
        if ((id.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) != 0) {
            return static_cast<std::int32_t>(*xcb_res_client_id_value_value(id.data));
        }
    }
    return std::nullopt;
}

void XSession::sync() {
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
    }
}

}  // namespace tessellon::desktop
