#include "platform/x11/x11_event_monitors.h"

#include <utility>

#include <unistd.h>
#include <xcb/res.h>

namespace tessellon::x11 {

X11EventMonitors::X11EventMonitors(Connection& connection, WindowMirror& mirror,
                                   const X11Displays& displays, RawInput& input)
    : connection_(connection), mirror_(mirror), displays_(displays), input_(input) {
    pressed_ = input_.buttonPressed().subscribe([this](std::uint32_t button) {
        if (button != XCB_BUTTON_INDEX_1 && button != XCB_BUTTON_INDEX_3) {
            return;
        }
        const auto audience = audienceOfPress();
        if (button == XCB_BUTTON_INDEX_1) {
            dragAudience_ = audience;
            hasMoved_ = false;
        }
        (audience == Audience::local ? local_ : global_).down.emit();
    });
    motion_ = input_.motion().subscribe([this] { onMotion(); });
    released_ = input_.buttonReleased().subscribe([this] { ofDrag().up.emit(); });
    // A panel of ours never has the focus of the desktop, so modifiers are always for others.
    flags_ = input_.flagsChanged().subscribe([this] { global_.flags.emit(); });
    listener_ = connection_.addActionListener([this](const auto& event) { onEvent(event); });
    idle_ = connection_.idle().subscribe([this] { onIdle(); });
}

void X11EventMonitors::onMotion() {
    hasMoved_ = true;
    windowFollows_ = false;
    ofDrag().dragged.emit();
}

/// A window manager that is busy, or draws no more than it shows, moves the window after the
/// pointer has come to rest. Whoever looked when the pointer moved saw the window where it was, and
/// has to look again.
void X11EventMonitors::onEvent(const xcb_generic_event_t& event) {
    if (eventType(event) == XCB_CONFIGURE_NOTIFY && hasMoved_ && input_.isLeftButtonDown()) {
        const auto window = eventAs<xcb_configure_notify_event_t>(event).window;
        windowFollows_ = windowFollows_ || mirror_.findByTopLevel(window) != nullptr;
    }
}

void X11EventMonitors::onIdle() {
    if (std::exchange(windowFollows_, false) && input_.isLeftButtonDown()) {
        ofDrag().dragged.emit();
    }
}

X11EventMonitors::Audience X11EventMonitors::audienceOfPress() const {
    const auto& pointer = input_.pointerAtPress();
    return pointer && belongsToUs(pointer->topLevel) ? Audience::local : Audience::global;
}

bool X11EventMonitors::belongsToUs(xcb_window_t topLevel) const {
    if (topLevel == XCB_WINDOW_NONE) {
        return false;
    }
    // A managed window's frame is the window manager's; the window in it tells whose it is.
    mirror_.look();
    if (const auto* client = mirror_.findByTopLevel(topLevel)) {
        return client->pid == getpid();
    }
    connection_.countRoundTrip();
    const xcb_res_client_id_spec_t wanted{topLevel, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const Reply<xcb_res_query_client_ids_reply_t> reply(xcb_res_query_client_ids_reply(
        connection_.xcb(), xcb_res_query_client_ids_unchecked(connection_.xcb(), 1, &wanted),
        nullptr));
    if (!reply) {
        return false;
    }
    for (auto id = xcb_res_query_client_ids_ids_iterator(reply.get()); id.rem > 0;
         xcb_res_client_id_value_next(&id)) {
        if (xcb_res_client_id_value_value_length(id.data) == 1 &&
            static_cast<pid_t>(*xcb_res_client_id_value_value(id.data)) == getpid()) {
            return true;
        }
    }
    return false;
}

const Signal<>& X11EventMonitors::signalFor(const Signals& signals, MonitoredEvent event) {
    switch (event) {
        case MonitoredEvent::leftMouseDragged:
            return signals.dragged;
        case MonitoredEvent::leftMouseUp:
            return signals.up;
        case MonitoredEvent::mouseDown:
            return signals.down;
        case MonitoredEvent::flagsChanged:
            break;
    }
    return signals.flags;
}

/// Another way than the display's may bring the news of a press first, the bus of a tray for
/// instance. Whoever begins to listen on account of it has nothing to do with that press.
EventMonitors::Callback X11EventMonitors::sinceNow(Callback callback) const {
    return [this, mark = connection_.mark(), callback = std::move(callback)] {
        if (!connection_.toldIsOlderThan(mark)) {
            callback();
        }
    };
}

std::optional<Token> X11EventMonitors::addGlobalMonitor(MonitoredEvent event, Callback callback) {
    if (!input_.isAvailable()) {
        return std::nullopt;
    }
    return signalFor(global_, event).subscribe(sinceNow(std::move(callback)));
}

std::optional<Token> X11EventMonitors::addLocalMonitor(MonitoredEvent event, Callback callback) {
    if (!input_.isAvailable()) {
        return std::nullopt;
    }
    return signalFor(local_, event).subscribe(sinceNow(std::move(callback)));
}

std::optional<Token> X11EventMonitors::addLocalKeyMonitor(KeyHandler handler) {
    return keyHandlers_.add(std::move(handler));
}

KeyVerdict X11EventMonitors::offerKey(const KeyEvent& event) const {
    return keyHandlers_.anyGives(KeyVerdict::used, event) ? KeyVerdict::used : KeyVerdict::notUsed;
}

std::uint32_t X11EventMonitors::pressedMouseButtons() const {
    return input_.pressedButtons();
}

std::uint64_t X11EventMonitors::modifierFlags() const {
    return input_.modifierFlags();
}

std::optional<Point> X11EventMonitors::pointerLocation() const {
    const auto pointer = input_.queryPointer();
    if (!pointer) {
        return std::nullopt;
    }
    return Point{static_cast<double>(pointer->x), displays_.primaryHeight() - pointer->y};
}

}  // namespace tessellon::x11
