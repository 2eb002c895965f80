#include "harness/desktop_windows.h"

#include "harness/wait.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <span>
#include <stdexcept>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace tessellon::desktop {
namespace {

// Who asks, as EWMH numbers it: a pager, whose wishes window managers obey.
constexpr std::uint32_t sourcePager = 2;

// The parts of _NET_MOVERESIZE_WINDOW's first number.
constexpr std::uint32_t gravityNorthWest = 1;
constexpr std::uint32_t hasPositionAndSize = 0xFU << 8U;
constexpr std::uint32_t sourceShift = 12;

constexpr std::uint32_t stateNormal = 1;
constexpr std::uint32_t stateIconic = 3;
constexpr std::uint32_t stateAdd = 1;

std::uint32_t asNumber(int value) {
    return static_cast<std::uint32_t>(value);
}

// Has i3 run a command, by the socket that it listens on.
void tellI3(const std::string& socketPath, const std::string& command) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socketPath.size() >= sizeof address.sun_path) {
        throw std::runtime_error("the path of i3's socket is too long");
    }
    std::copy(socketPath.begin(), socketPath.end(), address.sun_path);
    const int connection = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    // Its messages: a magic word, the length, the kind (0 for commands), the text.
    const std::array<std::uint32_t, 2> header{static_cast<std::uint32_t>(command.size()), 0};
    std::string message = "i3-ipc";
    message.append(reinterpret_cast<const char*>(header.data()), sizeof header);
    message += command;
    const bool sent =
        connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0 &&
        write(connection, message.data(), message.size()) == static_cast<ssize_t>(message.size());
    char answer = 0;
    const bool answered = sent && read(connection, &answer, 1) == 1;
    close(connection);
    if (!answered) {
        throw std::runtime_error("i3 does not take commands");
    }
}

}  // namespace

std::vector<xcb_window_t> DesktopWindows::managed() {
    return x_.values(x_.root(), "_NET_CLIENT_LIST");
}

xcb_window_t DesktopWindows::waitForWindowOf(pid_t process) {
    std::optional<xcb_window_t> found;
    waitUntil([&] {
        for (const xcb_window_t window : managed()) {
            if (x_.processOf(window) == process && isShown(window) && visibleFrame(window)) {
                found = window;
            }
        }
        return found.has_value();
    });
    if (!found) {
        throw std::runtime_error("process " + std::to_string(process) + " shows no window");
    }
    return *found;
}

std::optional<xcb_window_t> DesktopWindows::waitForTitled(pid_t process, std::string_view wanted) {
    std::optional<xcb_window_t> found;
    waitUntil([&] {
        for (const xcb_window_t window : managed()) {
            if (title(window) == wanted && x_.processOf(window) == process && isShown(window) &&
                visibleFrame(window)) {
                found = window;
            }
        }
        return found.has_value();
    });
    return found;
}

std::string DesktopWindows::title(xcb_window_t window) {
    const std::string name = x_.bytes(window, "_NET_WM_NAME");
    return name.empty() ? x_.bytes(window, "WM_NAME") : name;
}

std::optional<xcb_window_t> DesktopWindows::active() {
    const auto value = x_.values(x_.root(), "_NET_ACTIVE_WINDOW");
    if (value.empty() || value.front() == XCB_WINDOW_NONE) {
        return std::nullopt;
    }
    return value.front();
}

bool DesktopWindows::isShown(xcb_window_t window) {
    const auto state = x_.values(window, "WM_STATE");
    if (state.empty() || state.front() != stateNormal) {
        return false;
    }
    const Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        x_.connection(), xcb_get_window_attributes(x_.connection(), window), nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE;
}

bool DesktopWindows::hasState(xcb_window_t window, std::string_view state) {
    const auto states = x_.values(window, "_NET_WM_STATE");
    return std::find(states.begin(), states.end(), x_.atom(state)) != states.end();
}

Edges DesktopWindows::edges(xcb_window_t window, std::string_view property) {
    // A hostile client may claim anything; no screen is larger than X's coordinates reach.
    constexpr std::uint32_t largestEdge = 32767;
    const auto values = x_.values(window, property);
    if (values.size() < 4 || std::any_of(values.begin(), values.begin() + 4,
                                         [](std::uint32_t edge) { return edge > largestEdge; })) {
        return {};
    }
    return {static_cast<int>(values[0]), static_cast<int>(values[1]), static_cast<int>(values[2]),
            static_cast<int>(values[3])};
}

FrameWindow DesktopWindows::frameWindow() const {
    return windowManager_ != nullptr ? windowManager_->frameWindow : FrameWindow::visible;
}

Edges DesktopWindows::decorations(xcb_window_t window) {
    if (frameWindow() != FrameWindow::unannounced) {
        return edges(window, "_NET_FRAME_EXTENTS");
    }
    const Frame client = clientGeometry(window).value_or(Frame{});
    const Frame outer = frameWindowGeometry(window).value_or(client);
    return {client.x - outer.x, outer.x + outer.width - client.x - client.width, client.y - outer.y,
            outer.y + outer.height - client.y - client.height};
}

// The window manager's own window around the client, borders in: what it drew, where it draws no
// more and no less than that window.
std::optional<Frame> DesktopWindows::frameWindowGeometry(xcb_window_t window) {
    xcb_window_t outermost = window;
    while (true) {
        const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
            x_.connection(), xcb_query_tree(x_.connection(), outermost), nullptr));
        if (!tree) {
            return std::nullopt;
        }
        if (tree->parent == x_.root() || tree->parent == XCB_WINDOW_NONE) {
            break;
        }
        outermost = tree->parent;
    }
    const Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
        x_.connection(), xcb_get_geometry(x_.connection(), outermost), nullptr));
    if (!geometry) {
        return std::nullopt;
    }
    const int borders = 2 * geometry->border_width;
    return Frame{geometry->x, geometry->y, geometry->width + borders, geometry->height + borders};
}

std::optional<Frame> DesktopWindows::clientGeometry(xcb_window_t window) {
    const Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
        x_.connection(), xcb_get_geometry(x_.connection(), window), nullptr));
    const Reply<xcb_translate_coordinates_reply_t> origin(xcb_translate_coordinates_reply(
        x_.connection(), xcb_translate_coordinates(x_.connection(), window, x_.root(), 0, 0),
        nullptr));
    if (!geometry || !origin) {
        return std::nullopt;
    }
    return Frame{origin->dst_x, origin->dst_y, geometry->width, geometry->height};
}

std::optional<Frame> DesktopWindows::visibleFrame(xcb_window_t window) {
    const auto client = clientGeometry(window);
    if (!client) {
        return std::nullopt;
    }
    const Frame outer = grown(*client, decorations(window));
    // Two measurements that share nothing. While they differ, the window manager is in the middle
    // of something.
    if (frameWindow() == FrameWindow::visible && frameWindowGeometry(window) != outer) {
        return std::nullopt;
    }
    return shrunk(outer, edges(window, "_GTK_FRAME_EXTENTS"));
}

Frame DesktopWindows::smallestSize(xcb_window_t window) {
    // WM_NORMAL_HINTS: the smallest size is its sixth and seventh number.
    const auto hints = x_.values(window, "WM_NORMAL_HINTS");
    constexpr std::uint32_t hasSmallest = 1U << 4U;
    if (hints.size() < 7 || (hints[0] & hasSmallest) == 0) {
        return {};
    }
    constexpr std::uint32_t largestSize = 32767;
    const Frame client{0, 0, static_cast<int>(std::min(hints[5], largestSize)),
                       static_cast<int>(std::min(hints[6], largestSize))};
    const Frame seen =
        shrunk(grown(client, decorations(window)), edges(window, "_GTK_FRAME_EXTENTS"));
    return {0, 0, seen.width, seen.height};
}

Frame DesktopWindows::settle(xcb_window_t window, const Frame& expected) {
    waitUntil([&] { return visibleFrame(window) == expected; });
    return visibleFrame(window).value_or(Frame{});
}

bool DesktopWindows::matchesWithinIncrements(xcb_window_t window, const Frame& expected) {
    // WM_NORMAL_HINTS: the increments are its tenth and eleventh number.
    const auto hints = x_.values(window, "WM_NORMAL_HINTS");
    const int cellWidth = hints.size() > 10 ? std::max(1, static_cast<int>(hints[9])) : 1;
    const int cellHeight = hints.size() > 10 ? std::max(1, static_cast<int>(hints[10])) : 1;
    const auto frame = visibleFrame(window);
    return frame && frame->x == expected.x && frame->y == expected.y &&
           std::abs(frame->width - expected.width) < cellWidth &&
           std::abs(frame->height - expected.height) < cellHeight;
}

Frame DesktopWindows::settleWithinIncrements(xcb_window_t window, const Frame& expected) {
    if (waitUntil([&] { return matchesWithinIncrements(window, expected); })) {
        return expected;
    }
    return visibleFrame(window).value_or(Frame{});
}

Frame DesktopWindows::place(xcb_window_t window, const Frame& frame) {
    const Edges shadow = edges(window, "_GTK_FRAME_EXTENTS");
    const Frame outer = grown(frame, shadow);
    const Frame client = shrunk(outer, decorations(window));
    Frame corner = outer;
    if (frameWindow() == FrameWindow::unannounced) {
        // There the request names the client's corner, its border in.
        const Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(
            x_.connection(), xcb_get_geometry(x_.connection(), window), nullptr));
        const int border = geometry ? geometry->border_width : 0;
        corner = grown(client, {border, border, border, border});
    }
    x_.tellRoot(
        window, "_NET_MOVERESIZE_WINDOW",
        {gravityNorthWest | hasPositionAndSize | (sourcePager << sourceShift), asNumber(corner.x),
         asNumber(corner.y), asNumber(client.width), asNumber(client.height)});
    waitUntil([&] { return matchesWithinIncrements(window, frame); });
    return visibleFrame(window).value_or(Frame{});
}

void DesktopWindows::activate(xcb_window_t window) {
    if (active() == window) {
        return;
    }
    x_.tellRoot(window, "_NET_ACTIVE_WINDOW", {sourcePager, x_.serverTime(), 0, 0, 0});
    if (!waitUntil([&] { return active() == window; })) {
        throw std::runtime_error("the window did not become the active one");
    }
}

void DesktopWindows::showDesktop(std::uint32_t number) {
    if (windowManager_ != nullptr && windowManager_->desktopsMade == DesktopsMade::whenShown) {
        tellI3(x_.bytes(x_.root(), "I3_SOCKET_PATH"), "workspace " + std::to_string(number + 1));
    } else {
        x_.tellRoot(x_.root(), "_NET_CURRENT_DESKTOP", {number, x_.serverTime(), 0, 0, 0});
    }
    if (!waitUntil(
            [&] { return x_.values(x_.root(), "_NET_CURRENT_DESKTOP") == std::vector{number}; })) {
        throw std::runtime_error("the window manager does not show that desktop");
    }
}

void DesktopWindows::maximize(xcb_window_t window) {
    if (!maximizes(window, patience)) {
        throw std::runtime_error("the window did not become maximized");
    }
}

bool DesktopWindows::maximizes(xcb_window_t window, std::chrono::milliseconds timeout) {
    x_.tellRoot(window, "_NET_WM_STATE",
                {stateAdd, x_.atom("_NET_WM_STATE_MAXIMIZED_VERT"),
                 x_.atom("_NET_WM_STATE_MAXIMIZED_HORZ"), sourcePager, 0});
    return waitUntil(
        [&] {
            // The program has followed once its window is as wide as the screen, without a shadow.
            const auto frame = visibleFrame(window);
            return hasState(window, "_NET_WM_STATE_MAXIMIZED_VERT") &&
                   hasState(window, "_NET_WM_STATE_MAXIMIZED_HORZ") && frame &&
                   frame->width >= x_.width() && edges(window, "_GTK_FRAME_EXTENTS") == Edges{};
        },
        timeout);
}

void DesktopWindows::minimize(xcb_window_t window) {
    if (!minimizes(window, patience)) {
        throw std::runtime_error("the window did not become minimized");
    }
}

bool DesktopWindows::minimizes(xcb_window_t window, std::chrono::milliseconds timeout) {
    x_.tellRoot(window, "WM_CHANGE_STATE", {stateIconic, 0, 0, 0, 0});
    return waitUntil([&] { return !isShown(window); }, timeout);
}

std::vector<Frame> DesktopWindows::unmanagedOf(pid_t process) {
    std::vector<Frame> frames;
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x_.connection(), xcb_query_tree(x_.connection(), x_.root()), nullptr));
    const auto children =
        tree ? std::span(xcb_query_tree_children(tree.get()),
                         static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())))
             : std::span<xcb_window_t>();
    for (const xcb_window_t child : children) {
        const Reply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            x_.connection(), xcb_get_window_attributes(x_.connection(), child), nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE &&
            attributes->override_redirect != 0 && x_.processOf(child) == process) {
            if (const auto frame = clientGeometry(child)) {
                frames.push_back(*frame);
            }
        }
    }
    return frames;
}

void DesktopWindows::close(xcb_window_t window) {
    x_.tellRoot(window, "_NET_CLOSE_WINDOW", {x_.serverTime(), sourcePager, 0, 0, 0});
}

}  // namespace tessellon::desktop
