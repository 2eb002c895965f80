#include "platform/x11/key_grabs.h"

#include "base/modifier_flag.h"

#include <array>
#include <utility>

namespace tessellon::x11 {

KeyGrabs::KeyGrabs(Connection& connection, const Keyboard& keyboard, WindowMirror& mirror,
                   RawInput& input)
    : connection_(connection), keyboard_(keyboard), mirror_(mirror), input_(input) {
    listener_ = connection_.addActionListener([this](const auto& event) { onEvent(event); });
    flags_ = input_.flagsChanged().subscribe([this] { onFlagsChanged(); });
}

KeyGrabs::~KeyGrabs() {
    if (foothold_ != XCB_WINDOW_NONE) {
        xcb_destroy_window(connection_.xcb(), foothold_);
    }
}

std::optional<Token> KeyGrabs::grab(const Combination& combination) {
    const bool withCommand =
        (combination.modifiers & keyboard_.flagMask(modifier_flag::command)) != 0;
    const Grabbed wanted{combination, keyboard_.lockVariants(), withCommand};
    const auto cookies = grabOn(connection_.root(), wanted);
    connection_.countRoundTrip();
    bool granted = true;
    for (const auto cookie : cookies) {
        const Reply<xcb_generic_error_t> error(xcb_request_check(connection_.xcb(), cookie));
        granted = granted && error == nullptr;
    }
    if (!granted) {
        // Others hold some of the variants only; the combination is theirs all the same.
        ungrabOn(connection_.root(), wanted);
        return std::nullopt;
    }
    const auto held = grabbed_.insert(grabbed_.end(), wanted);
    if (activeTopLevel_ == XCB_WINDOW_NONE) {
        follow();
    } else {
        grabOnActive(*held);
    }
    return Token([weak = std::weak_ptr(self_), held] {
        if (const auto self = weak.lock()) {
            (*self)->ungrabOn((*self)->connection_.root(), *held);
            (*self)->ungrabOnActive(*held);
            (*self)->grabbed_.erase(held);
        }
    });
}

std::vector<xcb_void_cookie_t> KeyGrabs::grabOn(xcb_window_t window, const Grabbed& grabbed) const {
    const auto& [code, modifiers, keyboardMode] = grabbed.combination;
    std::vector<xcb_void_cookie_t> cookies;
    for (const auto locks : grabbed.locks) {
        cookies.push_back(xcb_grab_key_checked(connection_.xcb(), 0, window,
                                               static_cast<std::uint16_t>(modifiers | locks), code,
                                               XCB_GRAB_MODE_ASYNC, keyboardMode));
    }
    return cookies;
}

void KeyGrabs::ungrabOn(xcb_window_t window, const Grabbed& grabbed) const {
    const auto& [code, modifiers, keyboardMode] = grabbed.combination;
    for (const auto locks : grabbed.locks) {
        xcb_ungrab_key(connection_.xcb(), code, window,
                       static_cast<std::uint16_t>(modifiers | locks));
    }
}

/// Whoever holds the combination there keeps it.
void KeyGrabs::grabOnActive(const Grabbed& grabbed) const {
    if (activeTopLevel_ != XCB_WINDOW_NONE && grabbed.withCommand) {
        for (const auto cookie : grabOn(activeTopLevel_, grabbed)) {
            xcb_discard_reply(connection_.xcb(), cookie.sequence);
        }
    }
}

void KeyGrabs::ungrabOnActive(const Grabbed& grabbed) const {
    if (activeTopLevel_ != XCB_WINDOW_NONE && grabbed.withCommand) {
        ungrabOn(activeTopLevel_, grabbed);
    }
}

void KeyGrabs::onEvent(const xcb_generic_event_t& event) {
    if (eventType(event) != XCB_PROPERTY_NOTIFY) {
        return;
    }
    const auto& change = eventAs<xcb_property_notify_event_t>(event);
    if (change.window == connection_.root() &&
        (change.atom == connection_.atom(Atom::netActiveWindow) ||
         change.atom == connection_.atom(Atom::netSupportingWmCheck))) {
        follow();
    }
}

/// The server passes a replayed key to the grabs below the root only while the pointer is below it,
/// too. Over the bare root there has to be something while the command key is down.
void KeyGrabs::onFlagsChanged() {
    auto* const xcb = connection_.xcb();
    const bool isNeeded = activeTopLevel_ != XCB_WINDOW_NONE &&
                          (input_.modifierFlags() & modifier_flag::command) != 0;
    if (!isNeeded && std::exchange(hasFoothold_, false)) {
        xcb_unmap_window(xcb, foothold_);
    }
    if (!isNeeded || hasFoothold_) {
        return;
    }
    const auto pointer = input_.queryPointer();
    if (!pointer || pointer->topLevel != XCB_WINDOW_NONE) {
        return;
    }
    if (foothold_ == XCB_WINDOW_NONE) {
        foothold_ = xcb_generate_id(xcb);
        const std::uint32_t bypassesWindowManager = 1;
        xcb_create_window(xcb, XCB_COPY_FROM_PARENT, foothold_, connection_.root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT,
                          XCB_CW_OVERRIDE_REDIRECT, &bypassesWindowManager);
    }
    const std::array<std::int32_t, 2> place{pointer->x, pointer->y};
    xcb_configure_window(xcb, foothold_, XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y, place.data());
    xcb_map_window(xcb, foothold_);
    xcb_flush(xcb);
    hasFoothold_ = true;
}

void KeyGrabs::follow() {
    mirror_.refresh();
    xcb_window_t topLevel = XCB_WINDOW_NONE;
    if (mirror_.habits().replaysKeysAfterCommand) {
        if (const auto* active = mirror_.activeWindow()) {
            topLevel = active->topLevel;
        }
    }
    if (topLevel == activeTopLevel_) {
        return;
    }
    for (const auto& each : grabbed_) {
        ungrabOnActive(each);
    }
    activeTopLevel_ = topLevel;
    for (const auto& each : grabbed_) {
        grabOnActive(each);
    }
    xcb_flush(connection_.xcb());
}

}  // namespace tessellon::x11
