#include "platform/x11/x11_keyboard_focus.h"

#include <utility>

namespace tessellon::x11 {
namespace {

// A window manager that grabs the command keys holds the keyboard until they are up.
constexpr Seconds patienceWithHolder{1.0};
constexpr Seconds retryPeriod{0.01};

bool isWheel(std::uint32_t button) {
    return button >= 4 && button <= 7;
}

bool contains(const Rect& frame, Point point) {
    return point.x >= frame.x && point.x < frame.x + frame.width && point.y > frame.y &&
           point.y <= frame.y + frame.height;
}

}  // namespace

X11KeyboardFocus::X11KeyboardFocus(Services services) : services_(services) {
    stateListener_ =
        services_.connection.addStateListener([this](const auto& event) { onState(event); });
    listener_ =
        services_.connection.addActionListener([this](const auto& event) { onEvent(event); });
    buttons_ = services_.input.buttonPressed().subscribe(
        [this](std::uint32_t button) { onButton(button); });
}

X11KeyboardFocus::~X11KeyboardFocus() {
    if (grab_ != Grab::none) {
        xcb_ungrab_keyboard(services_.connection.xcb(), XCB_CURRENT_TIME);
        xcb_flush(services_.connection.xcb());
    }
}

Token X11KeyboardFocus::take(const Rect& panelFrame, Receiver receiver) {
    if (holder_) {
        replaced_ = services_.loop.after(Seconds{0}, [former = holder_->receiver] {
            if (former->lost) {
                former->lost();
            }
        });
    }
    const auto id = nextId_++;
    holder_.emplace(Holder{.id = id,
                           .panelFrame = panelFrame,
                           .receiver = std::make_shared<const Receiver>(std::move(receiver)),
                           .activeWindow = XCB_WINDOW_NONE,
                           .text = KeyText(services_.keyboard),
                           .pressed = {},
                           .given = {},
                           .retry = {},
                           .giveUpAt = services_.loop.uptime() + patienceWithHolder});
    // The keyboard first: until it is ours, what is typed goes elsewhere.
    if (!tryGrab()) {
        holder_->retry = services_.loop.every(retryPeriod, [this] { retry(); });
    }
    holder_->activeWindow = activeWindow().value_or(XCB_WINDOW_NONE);
    return Token([weak = std::weak_ptr(self_), id] {
        if (const auto self = weak.lock()) {
            (*self)->drop(id);
        }
    });
}

bool X11KeyboardFocus::tryGrab() {
    auto* xcb = services_.connection.xcb();
    services_.connection.countRoundTrip();
    // On the root, which is always viewable, so that nothing but our own word ends the grab.
    const Reply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(
        xcb,
        xcb_grab_keyboard(xcb, 0, services_.connection.root(), XCB_CURRENT_TIME,
                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
        nullptr));
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) {
        return false;
    }
    if (grab_ == Grab::none) {
        down_.clear();
        if (const auto chord = services_.taps.heldKey()) {
            down_.insert(*chord);
        }
    }
    grab_ = Grab::held;
    return true;
}

void X11KeyboardFocus::retry() {
    if (!holder_ || tryGrab()) {
        if (holder_) {
            holder_->retry.reset();
        }
    } else if (services_.loop.uptime() >= holder_->giveUpAt) {
        lose();
    }
}

void X11KeyboardFocus::drop(std::uint64_t id) {
    if (holder_ && holder_->id == id) {
        holder_.reset();
        letGo();
    }
}

void X11KeyboardFocus::lose() {
    const auto receiver = holder_->receiver;
    holder_.reset();
    letGo();
    if (receiver->lost) {
        receiver->lost();
    }
}

void X11KeyboardFocus::letGo() {
    if (grab_ == Grab::none) {
        return;
    }
    auto* xcb = services_.connection.xcb();
    if (down_.empty()) {
        grab_ = Grab::none;
        xcb_ungrab_keyboard(xcb, XCB_CURRENT_TIME);
    } else {
        grab_ = Grab::lingering;
        xcb_discard_reply(xcb,
                          xcb_grab_keyboard(xcb, 0, services_.connection.root(), XCB_CURRENT_TIME,
                                            XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC)
                              .sequence);
        xcb_allow_events(xcb, XCB_ALLOW_SYNC_KEYBOARD, XCB_CURRENT_TIME);
    }
    xcb_flush(xcb);
}

void X11KeyboardFocus::onState(const xcb_generic_event_t& event) {
    const auto code = eventAs<xcb_key_press_event_t>(event).detail;
    if (eventType(event) == XCB_KEY_RELEASE) {
        down_.erase(code);
    } else if (eventType(event) == XCB_KEY_PRESS && grab_ == Grab::held && holder_ &&
               !holder_->text.isModifier(code)) {
        down_.insert(code);
    }
}

void X11KeyboardFocus::onEvent(const xcb_generic_event_t& event) {
    const auto type = eventType(event);
    if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
        if (grab_ == Grab::lingering) {
            linger(event);
        } else if (grab_ == Grab::held && type == XCB_KEY_PRESS) {
            onPress(eventAs<xcb_key_press_event_t>(event));
        } else if (type == XCB_KEY_RELEASE) {
            onRelease(eventAs<xcb_key_release_event_t>(event));
        }
    } else if (type == XCB_PROPERTY_NOTIFY && holder_) {
        const auto& change = eventAs<xcb_property_notify_event_t>(event);
        if (change.window == services_.connection.root() &&
            change.atom == services_.connection.atom(Atom::netActiveWindow)) {
            // Some window managers name no window for a moment.
            const auto active = activeWindow().value_or(XCB_WINDOW_NONE);
            if (active != XCB_WINDOW_NONE && active != holder_->activeWindow) {
                lose();
            }
        }
    }
}

void X11KeyboardFocus::onPress(const xcb_key_press_event_t& event) {
    if (!holder_) {
        return;
    }
    const bool repeats = !holder_->pressed.insert(event.detail).second;
    if (services_.taps.hasSwallowed(event) || services_.hotKeys.isRegistered(event)) {
        return;
    }
    auto typed = holder_->text.press(event);
    typed.event.isRepeat = repeats;
    const auto id = holder_->id;
    if (services_.monitors.offerKey(typed.event) == KeyVerdict::used || !holder_ ||
        holder_->id != id) {
        return;
    }
    holder_->given.insert(event.detail);
    const auto receiver = holder_->receiver;
    receiver->key({KeyTransition::pressed, std::move(typed.event), typed.symbol});
}

void X11KeyboardFocus::onRelease(const xcb_key_release_event_t& event) {
    if (!holder_) {
        return;
    }
    holder_->pressed.erase(event.detail);
    if (holder_->given.erase(event.detail) != 0) {
        auto typed = holder_->text.release(event);
        const auto receiver = holder_->receiver;
        receiver->key({KeyTransition::released, std::move(typed.event), typed.symbol});
    }
}

void X11KeyboardFocus::linger(const xcb_generic_event_t& event) {
    auto* xcb = services_.connection.xcb();
    const auto code = eventAs<xcb_key_press_event_t>(event).detail;
    if (eventType(event) == XCB_KEY_PRESS && down_.count(code) == 0) {
        // The next word of whoever types is for the program in front.
        xcb_allow_events(xcb, XCB_ALLOW_REPLAY_KEYBOARD, XCB_CURRENT_TIME);
        down_.clear();
    }
    if (down_.empty()) {
        grab_ = Grab::none;
        xcb_ungrab_keyboard(xcb, XCB_CURRENT_TIME);
    } else {
        xcb_allow_events(xcb, XCB_ALLOW_SYNC_KEYBOARD, XCB_CURRENT_TIME);
    }
    xcb_flush(xcb);
}

void X11KeyboardFocus::onButton(std::uint32_t button) {
    if (!holder_ || isWheel(button)) {
        return;
    }
    const auto pointer = services_.monitors.pointerLocation();
    if (pointer && !contains(holder_->panelFrame, *pointer)) {
        lose();
    }
}

std::optional<xcb_window_t> X11KeyboardFocus::activeWindow() const {
    auto* xcb = services_.connection.xcb();
    services_.connection.countRoundTrip();
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        xcb,
        xcb_get_property_unchecked(xcb, 0, services_.connection.root(),
                                   services_.connection.atom(Atom::netActiveWindow),
                                   XCB_ATOM_WINDOW, 0, 1),
        nullptr));
    if (!reply || reply->format != 32 || xcb_get_property_value_length(reply.get()) < 4) {
        return std::nullopt;
    }
    return *static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()));
}

}  // namespace tessellon::x11
