#include "harness/dock.h"

#include "harness/wait.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

namespace tessellon::desktop {
namespace {

/// The room that the bar covers, measured from the edges of the screen.
std::array<std::uint32_t, 12> covered(const Frame& bar, Edge edge, const Frame& screen) {
    // left, right, top, bottom; then the start and the end of each along its edge.
    std::array<std::uint32_t, 12> strut{};
    const auto set = [&](std::size_t side, int room, int start, int length) {
        strut.at(side) = static_cast<std::uint32_t>(room);
        strut.at(4 + 2 * side) = static_cast<std::uint32_t>(start);
        strut.at(5 + 2 * side) = static_cast<std::uint32_t>(start + length - 1);
    };
    switch (edge) {
        case Edge::left:
            set(0, bar.x + bar.width, bar.y, bar.height);
            break;
        case Edge::right:
            set(1, screen.width - bar.x, bar.y, bar.height);
            break;
        case Edge::top:
            set(2, bar.y + bar.height, bar.x, bar.width);
            break;
        case Edge::bottom:
            set(3, screen.height - bar.y, bar.x, bar.width);
            break;
    }
    return strut;
}

}  // namespace

Dock::Dock(XSession& session, const DockPlace& place)
    : x_(session), window_(xcb_generate_id(session.connection())) {
    const auto [x, y, width, height] = place.frame;
    constexpr std::uint32_t barColor = 0x2B3240;
    const std::array<std::uint32_t, 1> values{barColor};
    xcb_create_window(x_.connection(), XCB_COPY_FROM_PARENT, window_, x_.root(),
                      static_cast<std::int16_t>(x), static_cast<std::int16_t>(y),
                      static_cast<std::uint16_t>(width), static_cast<std::uint16_t>(height), 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_BACK_PIXEL,
                      values.data());
    x_.setValues(window_, "_NET_WM_WINDOW_TYPE", "ATOM", {x_.atom("_NET_WM_WINDOW_TYPE_DOCK")});
    constexpr std::string_view nameAndClass("bar\0Bar", sizeof "bar\0Bar");
    xcb_change_property(x_.connection(), XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_CLASS,
                        XCB_ATOM_STRING, 8, nameAndClass.size(), nameAndClass.data());
    const auto strut =
        place.claims.value_or(covered(place.frame, place.edge, {0, 0, x_.width(), x_.height()}));
    x_.setValues(window_, "_NET_WM_STRUT_PARTIAL", "CARDINAL", {strut.begin(), strut.end()});
    // WM_NORMAL_HINTS with a position and a size that count as the user's.
    constexpr std::uint32_t userPositionAndSize = 3;
    const auto number = [](int value) { return static_cast<std::uint32_t>(value); };
    x_.setValues(window_, "WM_NORMAL_HINTS", "WM_SIZE_HINTS",
                 {userPositionAndSize, number(x), number(y), number(width), number(height), 0, 0, 0,
                  0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
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
