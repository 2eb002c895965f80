#include "platform/x11/x11_hot_key_center.h"

#include <algorithm>
#include <utility>

namespace tessellon::x11 {

X11HotKeyCenter::X11HotKeyCenter(Connection& connection, Keyboard& keyboard, KeyGrabs& grabs)
    : keyboard_(keyboard), grabs_(grabs) {
    listener_ = connection.addActionListener([this](const auto& event) { onEvent(event); });
    mapping_ = keyboard_.changed().subscribe([this] { changed_.emit(); });
}

Token X11HotKeyCenter::installHandler(Handler handler) {
    return handlers_.add(std::move(handler));
}

std::optional<Token> X11HotKeyCenter::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                     HotKeyId id) {
    const auto code = keyboard_.keyCode(keyCode);
    if (!code) {
        return std::nullopt;
    }
    const auto mask = keyboard_.modifierMask(modifiers);
    // The server lets a client grab twice what it holds already.
    const bool isOurs = std::any_of(keys_.begin(), keys_.end(), [&](const HotKey& other) {
        return other.code == *code && other.mask == mask;
    });
    if (isOurs) {
        return std::nullopt;
    }
    auto grab = grabs_.grab({.code = *code, .modifiers = mask});
    if (!grab) {
        return std::nullopt;
    }
    const auto registered = keys_.insert(keys_.end(), {id, *code, mask, std::move(*grab)});
    return Token([weak = std::weak_ptr(self_), registered] {
        if (const auto self = weak.lock()) {
            (*self)->keys_.erase(registered);
        }
    });
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
        return key.code == event.detail && key.mask == mask;
    });
}

bool X11HotKeyCenter::isRegistered(const xcb_key_press_event_t& event) const {
    return find(event) != keys_.end();
}

void X11HotKeyCenter::press(const xcb_key_press_event_t& event) {
    if (heldKey_ == event.detail && event.time - heldSince_ < keyboard_.longestRepeatGap()) {
        heldSince_ = event.time;
        return;
    }
    // What was typed is no reason to take the combination that follows for a repeat: its release
    // may have been for others.
    heldKey_.reset();
    if (const auto pressed = find(event); pressed != keys_.end()) {
        heldKey_ = event.detail;
        heldSince_ = event.time;
        // A copy: a handler may register hot keys anew.
        const auto id = pressed->id;
        handlers_.anyGives(HotKeyEventStatus::handled, id);
    }
}

}  // namespace tessellon::x11
