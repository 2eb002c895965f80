#include "platform/x11/x11_hot_key_center.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tessellon::x11 {
X11HotKeyCenter::X11HotKeyCenter(Connection& connection, Keyboard& keyboard)
    : connection_(connection), keyboard_(keyboard) {
    listener_ = connection_.addActionListener([this](const auto& event) { onEvent(event); });
    mapping_ = keyboard_.changed().subscribe([this] { changed_.emit(); });
}

Token X11HotKeyCenter::installHandler(Handler handler) {
    const auto installed =
        handlers_.insert(handlers_.end(), std::make_shared<Handler>(std::move(handler)));
    return Token([weak = std::weak_ptr(self_), installed] {
        if (const auto self = weak.lock()) {
            (*self)->handlers_.erase(installed);
        }
    });
}

std::optional<Token> X11HotKeyCenter::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                     HotKeyId id) {
    HotKey key{keyCode, modifiers, id, std::nullopt, 0, {}};
    const auto code = keyboard_.keyCode(keyCode);
    const auto mask = keyboard_.modifierMask(modifiers);
    // The server lets a client grab twice what it holds already.
    const bool isOurs = std::any_of(keys_.begin(), keys_.end(), [&](const HotKey& other) {
        return code && other.grabbedCode == code && other.grabbedMask == mask;
    });
    if (isOurs || !grab(key)) {
        return std::nullopt;
    }
    const auto registered = keys_.insert(keys_.end(), std::move(key));
    return Token([weak = std::weak_ptr(self_), registered] {
        if (const auto self = weak.lock()) {
            (*self)->ungrab(*registered);
            (*self)->keys_.erase(registered);
        }
    });
}

bool X11HotKeyCenter::grab(HotKey& key) {
    const auto code = keyboard_.keyCode(key.keyCode);
    if (!code) {
        return false;
    }
    key.grabbedCode = code;
    key.grabbedMask = keyboard_.modifierMask(key.modifiers);
    key.grabbedVariants = keyboard_.lockVariants();
    std::vector<xcb_void_cookie_t> cookies;
    for (const auto locks : key.grabbedVariants) {
        cookies.push_back(xcb_grab_key_checked(connection_.xcb(), 1, connection_.root(),
                                               static_cast<std::uint16_t>(key.grabbedMask | locks),
                                               *code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
    }
    connection_.countRoundTrip();
    bool granted = true;
    for (const auto cookie : cookies) {
        const Reply<xcb_generic_error_t> error(xcb_request_check(connection_.xcb(), cookie));
        granted = granted && error == nullptr;
    }
    if (!granted) {
        // Others hold some of the variants only; the combination is theirs all the same.
        ungrab(key);
    }
    return granted;
}

void X11HotKeyCenter::ungrab(HotKey& key) {
    if (!key.grabbedCode) {
        return;
    }
    for (const auto locks : key.grabbedVariants) {
        xcb_ungrab_key(connection_.xcb(), *key.grabbedCode, connection_.root(),
                       static_cast<std::uint16_t>(key.grabbedMask | locks));
    }
    key.grabbedCode.reset();
}

void X11HotKeyCenter::onEvent(const xcb_generic_event_t& event) {
    if (eventType(event) == XCB_KEY_PRESS) {
        press(eventAs<xcb_key_press_event_t>(event));
    } else if (eventType(event) == XCB_KEY_RELEASE &&
               heldKey_ == eventAs<xcb_key_release_event_t>(event).detail) {
        heldKey_.reset();
    }
}

std::list<X11HotKeyCenter::HotKey>::const_iterator X11HotKeyCenter::find(
    const xcb_key_press_event_t& event) const {
    const auto mask = keyboard_.withoutLocks(event.state);
    return std::find_if(keys_.begin(), keys_.end(), [&](const HotKey& key) {
        return key.grabbedCode == event.detail && key.grabbedMask == mask;
    });
}

bool X11HotKeyCenter::isRegistered(const xcb_key_press_event_t& event) const {
    return find(event) != keys_.end();
}

void X11HotKeyCenter::press(const xcb_key_press_event_t& event) {
    const bool repeats =
        heldKey_ == event.detail && event.time - heldSince_ < keyboard_.longestRepeatGap();
    heldKey_ = event.detail;
    heldSince_ = event.time;
    if (repeats) {
        return;
    }
    const auto pressed = find(event);
    if (pressed == keys_.end()) {
        return;
    }
    const std::optional<HotKeyId> id = pressed->id;
    // Copies: a handler may register hot keys anew, or take itself off.
    const auto handlers = handlers_;
    for (const auto& handler : handlers) {
        if ((*handler)(id) == HotKeyEventStatus::handled) {
            break;
        }
    }
}

}  // namespace tessellon::x11
