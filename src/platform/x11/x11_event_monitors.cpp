#include "platform/x11/x11_event_monitors.h"

namespace tessellon::x11 {

std::optional<Token> X11EventMonitors::addGlobalMonitor(MonitoredEvent /*event*/,
                                                        Callback /*callback*/) {
    return std::nullopt;
}

std::optional<Token> X11EventMonitors::addLocalMonitor(MonitoredEvent /*event*/,
                                                       Callback /*callback*/) {
    return std::nullopt;
}

std::optional<Token> X11EventMonitors::addLocalKeyMonitor(KeyHandler /*handler*/) {
    return std::nullopt;
}

std::uint32_t X11EventMonitors::pressedMouseButtons() const {
    return 0;
}

std::uint64_t X11EventMonitors::modifierFlags() const {
    return 0;
}

std::optional<Point> X11EventMonitors::pointerLocation() const {
    connection_.countRoundTrip();
    const Reply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        connection_.xcb(), xcb_query_pointer_unchecked(connection_.xcb(), connection_.root()),
        nullptr));
    if (!reply || reply->same_screen == 0) {
        return std::nullopt;
    }
    return Point{static_cast<double>(reply->root_x), displays_.primaryHeight() - reply->root_y};
}

}  // namespace tessellon::x11
