// The least that a program which moves windows by hot keys can do: waits for one of its keys, asks
// for the active window and the widths of its frame, and has the window manager move it to the
// place that the key stands for. The measure for the latency of the real program.
//
// Usage: bare_daemon KEYCODE X Y WIDTH HEIGHT [KEYCODE X Y WIDTH HEIGHT]...
// Keys are taken with Control, Alt and Shift.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

namespace {

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
template <typename T>
using Reply = std::unique_ptr<T, Free>;

struct KeyPlace {
    xcb_keycode_t key = 0;
    std::array<int, 4> frame{};  // x, y, width, height
};

constexpr std::uint16_t heldModifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_SHIFT;
constexpr std::array<std::uint16_t, 4> lockVariants{0, XCB_MOD_MASK_LOCK, XCB_MOD_MASK_2,
                                                    XCB_MOD_MASK_LOCK | XCB_MOD_MASK_2};
constexpr int numbersOfPlace = 5;

// _NET_MOVERESIZE_WINDOW: north-west gravity, everything given, asked by a pager.
constexpr std::uint32_t moveResizeFlags = 1U | 0xFU << 8U | 2U << 12U;

xcb_atom_t intern(xcb_connection_t* connection, std::string_view name) {
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection,
        xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

class Daemon {
  public:
    Daemon(xcb_connection_t* connection, std::vector<KeyPlace> places)
        : connection_(connection),
          root_(xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root),
          places_(std::move(places)),
          activeWindow_(intern(connection, "_NET_ACTIVE_WINDOW")),
          frameExtents_(intern(connection, "_NET_FRAME_EXTENTS")),
          moveResizeWindow_(intern(connection, "_NET_MOVERESIZE_WINDOW")),
          fence_(xcb_generate_id(connection)) {
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, fence_, root_, 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                          &mask);
        for (const KeyPlace& place : places_) {
            for (const std::uint16_t locks : lockVariants) {
                xcb_grab_key(connection_, 0, root_, heldModifiers | locks, place.key,
                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
            }
        }
        xcb_flush(connection_);
    }

    void run() {
        while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection_)}) {
            if ((event->response_type & 0x7FU) != XCB_KEY_PRESS) {
                continue;
            }
            const auto key = reinterpret_cast<const xcb_key_press_event_t*>(event.get())->detail;
            for (const KeyPlace& place : places_) {
                if (place.key == key) {
                    move(place);
                }
            }
        }
    }

  private:
    Reply<xcb_get_property_reply_t> property(xcb_window_t window, xcb_atom_t name,
                                             std::uint32_t words) {
        return Reply<xcb_get_property_reply_t>(xcb_get_property_reply(
            connection_,
            xcb_get_property(connection_, 0, window, name, XCB_GET_PROPERTY_TYPE_ANY, 0, words),
            nullptr));
    }

    void move(const KeyPlace& place) {
        const auto active = property(root_, activeWindow_, 1);
        if (!active || active->value_len != 1) {
            return;
        }
        const auto window = *static_cast<xcb_window_t*>(xcb_get_property_value(active.get()));
        std::array<std::uint32_t, 4> edges{};  // left, right, top, bottom
        const auto extents = property(window, frameExtents_, 4);
        if (extents && extents->value_len == edges.size()) {
            const auto* values =
                static_cast<const std::uint32_t*>(xcb_get_property_value(extents.get()));
            std::copy(values, values + edges.size(), edges.begin());
        }
        const auto& frame = place.frame;
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = window;
        message.type = moveResizeWindow_;
        message.data.data32[0] = moveResizeFlags;
        message.data.data32[1] = static_cast<std::uint32_t>(frame[0]);
        message.data.data32[2] = static_cast<std::uint32_t>(frame[1]);
        message.data.data32[3] = static_cast<std::uint32_t>(frame[2]) - edges[0] - edges[1];
        message.data.data32[4] = static_cast<std::uint32_t>(frame[3]) - edges[2] - edges[3];
        xcb_send_event(connection_, 0, root_,
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&message));
        waitForWindowManager();
    }

    // The window manager is asked to move a window of ours, in order behind the message.
    void waitForWindowManager() {
        fenceX_ = fenceX_ == 0 ? 1 : 0;
        const auto x = static_cast<std::uint32_t>(fenceX_);
        xcb_configure_window(connection_, fence_, XCB_CONFIG_WINDOW_X, &x);
        xcb_flush(connection_);
        while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(connection_)}) {
            const auto* notify = reinterpret_cast<const xcb_configure_notify_event_t*>(event.get());
            if ((event->response_type & 0x7FU) == XCB_CONFIGURE_NOTIFY &&
                notify->window == fence_ && notify->x == fenceX_) {
                return;
            }
        }
    }

    xcb_connection_t* connection_;
    xcb_window_t root_;
    std::vector<KeyPlace> places_;
    xcb_atom_t activeWindow_;
    xcb_atom_t frameExtents_;
    xcb_atom_t moveResizeWindow_;
    xcb_window_t fence_;
    std::int16_t fenceX_ = 0;
};

}  // namespace

int main(int argc, char** argv) {
    std::vector<KeyPlace> places;
    for (int i = 1; i + numbersOfPlace <= argc; i += numbersOfPlace) {
        KeyPlace place;
        place.key = static_cast<xcb_keycode_t>(std::atoi(argv[i]));
        for (int j = 0; j < 4; ++j) {
            place.frame[static_cast<std::size_t>(j)] = std::atoi(argv[i + 1 + j]);
        }
        places.push_back(place);
    }
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (places.empty() || xcb_connection_has_error(connection) != 0) {
        std::fputs("bare_daemon: needs a display, and keys with places\n", stderr);
        xcb_disconnect(connection);
        return EXIT_FAILURE;
    }
    Daemon(connection, std::move(places)).run();
    xcb_disconnect(connection);
    return EXIT_SUCCESS;
}
