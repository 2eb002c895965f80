#include "harness/dock.h"

#include "harness/wait.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

namespace tessellon::desktop {

Dock::Dock(XSession& session, std::uint16_t height)
    : x_(session), window_(xcb_generate_id(session.connection())) {
    constexpr std::uint32_t barColor = 0x2B3240;
    const std::array<std::uint32_t, 1> values{barColor};
    xcb_create_window(x_.connection(), XCB_COPY_FROM_PARENT, window_, x_.root(), 0, 0, x_.width(),
                      height, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_BACK_PIXEL, values.data());
    x_.setValues(window_, "_NET_WM_WINDOW_TYPE", "ATOM", {x_.atom("_NET_WM_WINDOW_TYPE_DOCK")});
    constexpr std::string_view nameAndClass("bar\0Bar", sizeof "bar\0Bar");
    xcb_change_property(x_.connection(), XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_CLASS,
                        XCB_ATOM_STRING, 8, nameAndClass.size(), nameAndClass.data());
    // left, right, top, bottom; then the start and end of each along its edge (EWMH).
    x_.setValues(window_, "_NET_WM_STRUT_PARTIAL", "CARDINAL",
                 {0, 0, height, 0, 0, 0, 0, 0, 0, x_.width() - 1U, 0, 0});
    // WM_NORMAL_HINTS with a position and a size that count as the user's.
    constexpr std::uint32_t userPositionAndSize = 3;
    x_.setValues(
        window_, "WM_NORMAL_HINTS", "WM_SIZE_HINTS",
        {userPositionAndSize, 0, 0, x_.width(), height, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    xcb_map_window(x_.connection(), window_);
    x_.sync();
    if (!waitUntil([&] {
            // i3 does not list docks.
            constexpr std::uint32_t normal = 1;
            const auto managed = x_.values(x_.root(), "_NET_CLIENT_LIST");
            const auto state = x_.values(window_, "WM_STATE");
            return std::find(managed.begin(), managed.end(), window_) != managed.end() ||
                   (!state.empty() && state.front() == normal);
        })) {
        throw std::runtime_error("the window manager does not take care of the dock");
    }
}

Dock::~Dock() {
    xcb_destroy_window(x_.connection(), window_);
    xcb_flush(x_.connection());
}

}  // namespace tessellon::desktop
