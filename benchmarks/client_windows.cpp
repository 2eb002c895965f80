#include "client_windows.h"

#include <cstdint>
#include <cstdlib>
#include <string>

#include <xcb/xcb.h>

namespace tessellon::benchmarks {

int showWindows(int count) {
    // Large enough not to count as small, and spread so that no two have the same frame.
    constexpr std::uint16_t width = 420;
    constexpr std::uint16_t height = 320;
    constexpr int columns = 25;
    constexpr int step = 40;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return EXIT_FAILURE;
    }
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    for (int i = 0; i < count; ++i) {
        const xcb_window_t window = xcb_generate_id(connection);
        xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root,
                          static_cast<std::int16_t>(i % columns * step),
                          static_cast<std::int16_t>(i / columns * step), width, height, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
        const auto setText = [&](xcb_atom_t property, const std::string& text) {
            xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, property,
                                XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(text.size()),
                                text.data());
        };
        setText(XCB_ATOM_WM_NAME, "Window " + std::to_string(i));
        setText(XCB_ATOM_WM_CLASS, std::string("crowd\0Crowd\0", 12));
        xcb_map_window(connection, window);
    }
    xcb_flush(connection);
    while (xcb_generic_event_t* event = xcb_wait_for_event(connection)) {
        std::free(event);
    }
    xcb_disconnect(connection);
    return EXIT_SUCCESS;
}

}  // namespace tessellon::benchmarks
