#include "platform/x11/x11_tray_icon.h"

#include "platform/x11/properties.h"
#include "platform/x11/reply.h"

#include <array>
#include <utility>

namespace tessellon::x11 {
namespace {

constexpr xcb_button_t firstWheel = 4;
constexpr xcb_button_t lastWheel = 7;

// Trays that put our pixels together with their own draw a moment after they have placed the icon,
// and tell nobody.
constexpr Seconds soonAfter{0.15};
constexpr Seconds laterAfter{1};

/// The number of the screen, which selections of the screen carry in their names.
int screenNumber(const Connection& connection) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection.xcb()));
    for (int number = 0; screens.rem > 0; ++number, xcb_screen_next(&screens)) {
        if (screens.data->root == connection.root()) {
            return number;
        }
    }
    return 0;
}

xcb_atom_t internSelection(const Connection& connection) {
    const auto name = "_NET_SYSTEM_TRAY_S" + std::to_string(screenNumber(connection));
    connection.countRoundTrip();
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        connection.xcb(),
        xcb_intern_atom_unchecked(connection.xcb(), 0, static_cast<std::uint16_t>(name.size()),
                                  name.data()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

/// The first of the four colors, each of which is three numbers of 16 bits.
std::optional<IconColor> foreground(const RawProperty& colors) {
    constexpr std::size_t fourColors = 12;
    const auto values = cardinals(colors);
    if (values.size() < fourColors) {
        return std::nullopt;
    }
    const auto part = [&](std::size_t i) { return (values[i] >> 8U) & 0xffU; };
    return part(0) << 16U | part(1) << 8U | part(2);
}

}  // namespace

X11TrayIcon::X11TrayIcon(Connection& connection, const X11Displays& displays, RunLoop& runLoop,
                         std::string name, IconPainter painter)
    : connection_(connection),
      displays_(displays),
      runLoop_(runLoop),
      name_(std::move(name)),
      painter_(std::move(painter)),
      selection_(internSelection(connection)),
      watch_(connection, selection_),
      ownerChanged_(watch_.changed().subscribe([this] { selectionChanged(); })) {
    listener_ = connection_.addActionListener([this](const auto& event) { onEvent(event); });
    idle_ = connection_.idle().subscribe([this] { settle(); });
    adopt(selectionOwner(connection_, selection_));
}

void X11TrayIcon::setShown(bool shown) {
    if (std::exchange(isShown_, shown) == shown) {
        return;
    }
    if (shown) {
        dockAsWished();
    } else {
        plug_.reset();
    }
}

std::optional<Rect> X11TrayIcon::frame() const {
    const auto frame = plug_ ? plug_->frame() : std::nullopt;
    if (!frame) {
        return std::nullopt;
    }
    return Rect{frame->x, displays_.primaryHeight() - frame->maxY(), frame->width, frame->height};
}

void X11TrayIcon::setHighlighted(bool highlighted) {
    if (std::exchange(isHighlighted_, highlighted) != highlighted) {
        draw();
    }
}

void X11TrayIcon::onEvent(const xcb_generic_event_t& event) {
    const auto type = eventType(event);
    if (type == XCB_CLIENT_MESSAGE) {
        const auto& message = eventAs<xcb_client_message_event_t>(event);
        if (message.window == connection_.root() && message.format == 32 &&
            message.type == connection_.atom(Atom::manager) &&
            message.data.data32[1] == selection_) {
            announced();
        }
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& notify = eventAs<xcb_property_notify_event_t>(event);
        if (isAvailable() && notify.window == tray_ &&
            (notify.atom == connection_.atom(Atom::netSystemTrayColors) ||
             notify.atom == connection_.atom(Atom::netSystemTrayVisual))) {
            wishesChanged();
        }
    } else if (plug_) {
        onPlugEvent(event);
    }
}

void X11TrayIcon::onPlugEvent(const xcb_generic_event_t& event) {
    // Of the root's children the mirror is told as well; once is enough.
    const auto window = plug_->window();
    switch (eventType(event)) {
        case XCB_REPARENT_NOTIFY:
            if (const auto& notify = eventAs<xcb_reparent_notify_event_t>(event);
                notify.event == window) {
                onReparented(notify.parent);
            }
            break;
        case XCB_DESTROY_NOTIFY:
            if (eventAs<xcb_destroy_notify_event_t>(event).event == window) {
                plug_.reset();
            }
            break;
        case XCB_CONFIGURE_NOTIFY:
            if (const auto& notify = eventAs<xcb_configure_notify_event_t>(event);
                notify.event == window) {
                plug_->setSize(notify.width, notify.height);
                stir();
            }
            break;
        case XCB_MAP_NOTIFY:
            if (eventAs<xcb_map_notify_event_t>(event).event == window) {
                stir();
            }
            break;
        case XCB_EXPOSE:
            if (eventAs<xcb_expose_event_t>(event).window == window) {
                stir();
            }
            break;
        case XCB_ENTER_NOTIFY:
            if (eventAs<xcb_enter_notify_event_t>(event).event == window) {
                lookAgain();
            }
            break;
        case XCB_BUTTON_PRESS:
            if (const auto& press = eventAs<xcb_button_press_event_t>(event);
                press.event == window && (press.detail < firstWheel || press.detail > lastWheel)) {
                // The pointer would be ours until the button is up again, and what opens now could
                // not take it.
                xcb_ungrab_pointer(connection_.xcb(), press.time);
                xcb_flush(connection_.xcb());
                activated_.emit();
            }
            break;
        default:
            break;
    }
}

void X11TrayIcon::onReparented(xcb_window_t parent) {
    if (parent == connection_.root()) {
        // Given back by a tray that ends: nothing of it may stay on the desktop.
        plug_.reset();
        return;
    }
    auto* const xcb = connection_.xcb();
    const auto asked = xcb_get_window_attributes_unchecked(xcb, parent);
    const auto measured = xcb_get_geometry_unchecked(xcb, parent);
    connection_.countRoundTrip();
    const Reply<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(xcb, asked, nullptr));
    const Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(xcb, measured, nullptr));
    if (!attributes || !geometry) {
        return;  // it has died, and that will be told
    }
    if (plug_->embedIn(geometry->depth) || attributes->visual == plug_->visual() ||
        !findTrayVisual(connection_, attributes->visual)) {
        stir();
    } else {
        dock(attributes->visual, TrayPlug::Ground::ofParent);
    }
}

/// A tray that has just got the selection says a little later, in its announcement, that it is
/// ready.
void X11TrayIcon::selectionChanged() {
    if (isAvailable() && selectionOwner(connection_, selection_) != tray_) {
        adopt(XCB_WINDOW_NONE);
    }
}

void X11TrayIcon::announced() {
    const auto owner = selectionOwner(connection_, selection_);
    if (owner != tray_) {
        adopt(owner);
    } else if (isAvailable()) {
        wishesChanged();
    }
}

void X11TrayIcon::adopt(xcb_window_t tray) {
    const bool wasAvailable = isAvailable();
    plug_.reset();
    tray_ = tray;
    if (isAvailable()) {
        // The mirror asks for the same of the windows that it knows.
        constexpr std::uint32_t events =
            XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        xcb_change_window_attributes(connection_.xcb(), tray_, XCB_CW_EVENT_MASK, &events);
        dockAsWished();
    }
    if (isAvailable() != wasAvailable) {
        availabilityChanged_.emit();
    }
}

void X11TrayIcon::wishesChanged() {
    const auto before = std::exchange(wishes_, readWishes());
    if (!plug_ || before.visual != wishes_.visual) {
        dockAsWished();
    } else {
        stir();
    }
}

X11TrayIcon::Wishes X11TrayIcon::readWishes() const {
    auto* const xcb = connection_.xcb();
    const auto ask = [&](Atom name) {
        constexpr std::uint32_t words = 12;
        return xcb_get_property_unchecked(xcb, 0, tray_, connection_.atom(name),
                                          XCB_GET_PROPERTY_TYPE_ANY, 0, words);
    };
    const auto visualAsked = ask(Atom::netSystemTrayVisual);
    const auto colorsAsked = ask(Atom::netSystemTrayColors);
    connection_.countRoundTrip();
    const Reply<xcb_get_property_reply_t> visual(xcb_get_property_reply(xcb, visualAsked, nullptr));
    const Reply<xcb_get_property_reply_t> colors(xcb_get_property_reply(xcb, colorsAsked, nullptr));
    return {firstCardinal(rawProperty(visual.get())).value_or(XCB_NONE),
            foreground(rawProperty(colors.get()))};
}

void X11TrayIcon::dockAsWished() {
    if (!isShown_ || !isAvailable()) {
        return;
    }
    wishes_ = readWishes();
    const auto offered = findTrayVisual(connection_, wishes_.visual);
    if (offered && offered->depth == 32) {
        dock(offered->id, TrayPlug::Ground::translucent);
    } else {
        dock(offered ? offered->id : connection_.screen().root_visual, TrayPlug::Ground::ofParent);
    }
}

void X11TrayIcon::dock(xcb_visualid_t wanted, TrayPlug::Ground ground) {
    plug_.reset();
    const auto visual = findTrayVisual(connection_, wanted);
    if (!visual) {
        return;  // a screen of few colors
    }
    plug_ = std::make_unique<TrayPlug>(connection_, *visual, ground, name_);
    constexpr std::uint32_t requestDock = 0;  // SYSTEM_TRAY_REQUEST_DOCK
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = tray_;
    message.type = connection_.atom(Atom::netSystemTrayOpcode);
    message.data.data32[0] = XCB_CURRENT_TIME;
    message.data.data32[1] = requestDock;
    message.data.data32[2] = plug_->window();
    xcb_send_event(connection_.xcb(), 0, tray_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    xcb_flush(connection_.xcb());
}

/// Something about the icon or what is behind it has changed: one drawing does for all that came
/// together.
void X11TrayIcon::stir() {
    isStirred_ = true;
}

void X11TrayIcon::settle() {
    if (!std::exchange(isStirred_, false) || !plug_ || !plug_->isEmbedded()) {
        return;
    }
    if (plug_->ground() == TrayPlug::Ground::translucent) {
        if (!isHighlighted_) {
            plug_->chooseColor(wishes_.color);
        }
        soon_ = runLoop_.after(soonAfter, [this] { lookAgain(); });
        later_ = runLoop_.after(laterAfter, [this] { lookAgain(); });
    }
    draw();
}

/// The highlight is of the icon's own color, which it would make look wrong.
void X11TrayIcon::lookAgain() {
    if (plug_ && !isHighlighted_ && plug_->chooseColor(wishes_.color)) {
        draw();
    }
}

void X11TrayIcon::draw() {
    if (plug_) {
        plug_->draw(painter_, wishes_.color, isHighlighted_);
    }
}

}  // namespace tessellon::x11
