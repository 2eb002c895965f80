#include "bare_mover.h"

#include <algorithm>
#include <vector>

namespace tessellon::benchmarks {
namespace {

// _NET_MOVERESIZE_WINDOW: north-west gravity, everything given, asked by a pager.
constexpr std::uint32_t moveResizeFlags = 1U | 0xFU << 8U | 2U << 12U;

}  // namespace

BareMover::BareMover(xcb_connection_t* connection)
    : connection_(connection),
      root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root),
      frameExtents_(intern("_NET_FRAME_EXTENTS")),
      moveResizeWindow_(intern("_NET_MOVERESIZE_WINDOW")),
      fence_(xcb_generate_id(connection)) {
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(connection_, XCB_COPY_FROM_PARENT, fence_, root_, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
}

xcb_atom_t BareMover::intern(std::string_view name) const {
    const BareReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection_,
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

void BareMover::move(std::span<const BareMove> moves) {
    std::vector<xcb_get_property_cookie_t> cookies;
    cookies.reserve(moves.size());
    for (const BareMove& wanted : moves) {
        cookies.push_back(xcb_get_property(connection_, 0, wanted.window, frameExtents_,
                                           XCB_ATOM_CARDINAL, 0, 4));
    }
    for (std::size_t i = 0; i < moves.size(); ++i) {
        const BareReply<xcb_get_property_reply_t> extents(
            xcb_get_property_reply(connection_, cookies[i], nullptr));
        std::array<std::uint32_t, 4> edges{};  // left, right, top, bottom
        if (extents && extents->value_len == edges.size()) {
            const auto* values =
                static_cast<const std::uint32_t*>(xcb_get_property_value(extents.get()));
            std::copy(values, values + edges.size(), edges.begin());
        }
        send(moves[i], edges);
    }
    waitForWindowManager();
}

void BareMover::send(const BareMove& move, const std::array<std::uint32_t, 4>& edges) const {
    const auto value = [&](std::size_t i) { return static_cast<std::uint32_t>(move.place[i]); };
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = move.window;
    message.type = moveResizeWindow_;
    message.data.data32[0] = moveResizeFlags;
    message.data.data32[1] = value(0);
    message.data.data32[2] = value(1);
    message.data.data32[3] = value(2) - edges[0] - edges[1];
    message.data.data32[4] = value(3) - edges[2] - edges[3];
    xcb_send_event(connection_, 0, root_,
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&message));
}

// The window manager is asked to move a window of ours, in order behind the messages.
void BareMover::waitForWindowManager() {
    fenceX_ = fenceX_ == 0 ? 1 : 0;
    const auto x = static_cast<std::uint32_t>(fenceX_);
    xcb_configure_window(connection_, fence_, XCB_CONFIG_WINDOW_X, &x);
    xcb_flush(connection_);
    while (const BareReply<xcb_generic_event_t> event{xcb_wait_for_event(connection_)}) {
        const auto* notify = reinterpret_cast<const xcb_configure_notify_event_t*>(event.get());
        if ((event->response_type & 0x7FU) == XCB_CONFIGURE_NOTIFY && notify->window == fence_ &&
            notify->x == fenceX_) {
            return;
        }
    }
}

}  // namespace tessellon::benchmarks
