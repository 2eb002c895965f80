#include "platform/x11/x11_keyboard_focus.h"

#include "platform/x11/properties.h"

#include <algorithm>
#include <utility>

namespace tessellon::x11 {
namespace {

// A window manager that grabs the command keys holds the keyboard until they are up.
constexpr Seconds patienceWithHolder{1.0};
constexpr Seconds retryPeriod{0.01};

bool isKey(const xcb_generic_event_t& event) {
    return eventType(event) == XCB_KEY_PRESS || eventType(event) == XCB_KEY_RELEASE;
}

bool isWheel(std::uint32_t button) {
    return button >= 4 && button <= 7;
}

bool contains(const Rect& frame, Point point) {
    return point.x >= frame.x && point.x < frame.x + frame.width && point.y > frame.y &&
           point.y <= frame.y + frame.height;
}

}  // namespace

X11KeyboardFocus::X11KeyboardFocus(Services services) : services_(services) {
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
        replaced_[holder_->id] =
            services_.loop.after(Seconds{0}, [this, id = holder_->id, former = holder_->receiver] {
                replaced_.erase(id);
                if (former->lost) {
                    former->lost();
                }
            });
    }
    const auto id = nextId_++;
    holder_.emplace(Holder{.id = id,
                           .panelFrame = panelFrame,
                           .receiver = std::make_shared<const Receiver>(std::move(receiver)),
                           .since = services_.connection.mark(),
                           .scene = {},
                           .text = KeyText(services_.keyboard),
                           .pressed = {},
                           .given = {},
                           .retry = {},
                           .giveUpAt = services_.loop.uptime() + patienceWithHolder});
    // The keyboard first: until it is ours, what is typed goes elsewhere.
    if (!tryGrab()) {
        holder_->retry = services_.loop.every(retryPeriod, [this] { retry(); });
    }
    holder_->scene = lookAtScene();
    return Token([weak = std::weak_ptr(self_), id] {
        if (const auto self = weak.lock()) {
            (*self)->drop(id);
        }
    });
}

bool X11KeyboardFocus::tryGrab() {
    if (grab_ == Grab::held) {
        return true;
    }
    auto* xcb = services_.connection.xcb();
    services_.connection.countRoundTrip();
    // On the root, which is always viewable, so that nothing but our own word ends the grab.
    const auto request = xcb_grab_keyboard(xcb, 0, services_.connection.root(), XCB_CURRENT_TIME,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
    const Reply<xcb_grab_keyboard_reply_t> reply(xcb_grab_keyboard_reply(xcb, request, nullptr));
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) {
        return false;
    }
    if (grab_ == Grab::none) {
        down_.clear();
        if (const auto chord = services_.taps.heldKey()) {
            down_.insert(*chord);
        }
    }
    if (const auto* press = pressAtHand()) {
        down_.insert(press->detail);
    }
    grabRequest_ = request.sequence;
    grab_ = Grab::held;
    services_.taps.setAnswers(X11EventTaps::Answers::byHolder);
    allow(XCB_ALLOW_SYNC_KEYBOARD);
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
    replaced_.erase(id);
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
    if (grab_ != Grab::held) {
        return;
    }
    const auto* told = services_.connection.told();
    const auto* press = pressAtHand();
    if (press != nullptr && isFromGrab(*told)) {
        down_.insert(press->detail);
    }
    forgetKeysThatAreUp();
    if (!down_.empty()) {
        grab_ = Grab::lingering;
        return;
    }
    if (told == nullptr || !isKey(*told)) {
        // A key that is on its way to us at this moment belongs to the program in front already.
        allow(XCB_ALLOW_REPLAY_KEYBOARD);
    }
    release();
}

/// A key may have come up between its press and our grab, while nobody held the keyboard: its
/// release was for others, and whoever waited for it would keep the keyboard.
void X11KeyboardFocus::forgetKeysThatAreUp() {
    if (down_.empty()) {
        return;
    }
    auto* xcb = services_.connection.xcb();
    services_.connection.countRoundTrip();
    const Reply<xcb_query_keymap_reply_t> keymap(
        xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
    if (!keymap) {
        return;
    }
    constexpr unsigned bitsPerByte = 8;
    std::erase_if(down_, [&](xcb_keycode_t key) {
        return (keymap->keys[key / bitsPerByte] & 1U << key % bitsPerByte) == 0;
    });
}

void X11KeyboardFocus::release() {
    xcb_ungrab_keyboard(services_.connection.xcb(), XCB_CURRENT_TIME);
    xcb_flush(services_.connection.xcb());
    grab_ = Grab::none;
    services_.taps.setAnswers(X11EventTaps::Answers::byTaps);
}

void X11KeyboardFocus::allow(std::uint8_t mode) {
    xcb_allow_events(services_.connection.xcb(), mode, XCB_CURRENT_TIME);
    xcb_flush(services_.connection.xcb());
}

bool X11KeyboardFocus::isFromGrab(const xcb_generic_event_t& event) const {
    // An event carries the number of the request that the server had served last. What came before
    // the grab was stopped, and is answered for, by others.
    return static_cast<std::int32_t>(event.full_sequence - grabRequest_) >= 0;
}

const xcb_key_press_event_t* X11KeyboardFocus::pressAtHand() const {
    const auto* told = services_.connection.told();
    return told != nullptr && eventType(*told) == XCB_KEY_PRESS
               ? &eventAs<xcb_key_press_event_t>(*told)
               : nullptr;
}

void X11KeyboardFocus::onEvent(const xcb_generic_event_t& event) {
    if (isKey(event)) {
        onKey(event);
    } else if (eventType(event) == XCB_PROPERTY_NOTIFY && holder_) {
        const auto& change = eventAs<xcb_property_notify_event_t>(event);
        if (change.window == services_.connection.root() &&
            (change.atom == services_.connection.atom(Atom::netActiveWindow) ||
             change.atom == services_.connection.atom(Atom::netCurrentDesktop))) {
            onSceneChange();
        }
    }
}

void X11KeyboardFocus::onKey(const xcb_generic_event_t& event) {
    const auto& key = eventAs<xcb_key_press_event_t>(event);
    if (grab_ == Grab::none || !isFromGrab(event)) {
        return;
    }
    if (eventType(event) == XCB_KEY_RELEASE) {
        down_.erase(key.detail);
        onRelease(key);
        if (grab_ == Grab::lingering && down_.empty()) {
            release();
        }
    } else if (grab_ == Grab::lingering) {
        lingerAtPress(key);
    } else {
        onPress(key);
    }
    // Not if the keyboard was let go, or taken anew, on account of this key.
    if (grab_ != Grab::none && isFromGrab(event)) {
        allow(XCB_ALLOW_SYNC_KEYBOARD);
    }
}

void X11KeyboardFocus::onPress(const xcb_key_press_event_t& event) {
    if (!holder_) {
        return;
    }
    const bool isModifier = holder_->text.isModifier(event);
    if (!isModifier) {
        down_.insert(event.detail);
    }
    const bool repeats = !holder_->pressed.insert(event.detail).second;
    if (services_.taps.hasSwallowed(event) || services_.hotKeys.isRegistered(event)) {
        return;
    }
    auto typed = holder_->text.press(event);
    typed.event.isRepeat = repeats;
    const auto id = holder_->id;
    const bool isUsed = !isModifier && services_.monitors.offerKey(typed.event) == KeyVerdict::used;
    if (isUsed || !holder_ || holder_->id != id) {
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

void X11KeyboardFocus::lingerAtPress(const xcb_key_press_event_t& event) {
    if (down_.count(event.detail) != 0) {
        return;
    }
    if (services_.taps.hasSwallowed(event) || services_.hotKeys.isRegistered(event)) {
        down_.insert(event.detail);
        return;
    }
    // The next word of whoever types is for the program in front. The answer ends the grab.
    down_.clear();
    grab_ = Grab::none;
    services_.taps.setAnswers(X11EventTaps::Answers::byTaps);
    allow(XCB_ALLOW_REPLAY_KEYBOARD);
}

void X11KeyboardFocus::onButton(std::uint32_t button) {
    if (!holder_ || isWheel(button) || services_.connection.toldIsOlderThan(holder_->since)) {
        return;
    }
    const auto pointer = services_.monitors.pointerLocation();
    if (pointer && !contains(holder_->panelFrame, *pointer)) {
        lose();
    }
}

X11KeyboardFocus::Scene X11KeyboardFocus::lookAtScene() const {
    auto* xcb = services_.connection.xcb();
    services_.connection.countRoundTrip();
    const auto ask = [&](Atom name) {
        return xcb_get_property_unchecked(xcb, 0, services_.connection.root(),
                                          services_.connection.atom(name),
                                          XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    };
    const auto answer = [&](xcb_get_property_cookie_t cookie) {
        const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb, cookie, nullptr));
        return firstCardinal(rawProperty(reply.get())).value_or(0);
    };
    const auto activeWindow = ask(Atom::netActiveWindow);
    const auto workspace = ask(Atom::netCurrentDesktop);
    const auto pointer = xcb_query_pointer_unchecked(xcb, services_.connection.root());
    Scene scene;
    scene.activeWindow = answer(activeWindow);
    scene.workspace = answer(workspace);
    if (const Reply<xcb_query_pointer_reply_t> reply{
            xcb_query_pointer_reply(xcb, pointer, nullptr)}) {
        scene.pointer = {double(reply->root_x), double(reply->root_y)};
    }
    return scene;
}

void X11KeyboardFocus::onSceneChange() {
    const auto now = lookAtScene();
    if (now.workspace != holder_->scene.workspace) {
        lose();  // whatever the panel is about stayed behind
        return;
    }
    // Some window managers name no window for a moment. Where none was active at first, one that
    // becomes active is another all the same.
    if (now.activeWindow == XCB_WINDOW_NONE || now.activeWindow == holder_->scene.activeWindow) {
        return;
    }
    // Where the focus follows the pointer, the way to the panel activates what lies on it; that is
    // nobody's wish to go elsewhere.
    const auto before = std::exchange(holder_->scene, now);
    const bool isSideEffect = services_.input.pressedButtons() == 0 &&
                              !(before.pointer == now.pointer) &&
                              isTouched(now.activeWindow, before.pointer, now.pointer);
    if (!isSideEffect) {
        lose();
    }
}

bool X11KeyboardFocus::isTouched(xcb_window_t window, Point from, Point to) const {
    auto* xcb = services_.connection.xcb();
    services_.connection.countRoundTrip();
    const auto size = xcb_get_geometry_unchecked(xcb, window);
    const auto origin =
        xcb_translate_coordinates_unchecked(xcb, window, services_.connection.root(), 0, 0);
    const Reply<xcb_get_geometry_reply_t> geometry(xcb_get_geometry_reply(xcb, size, nullptr));
    const Reply<xcb_translate_coordinates_reply_t> corner(
        xcb_translate_coordinates_reply(xcb, origin, nullptr));
    if (!geometry || !corner) {
        return false;
    }
    // The pointer has come from the one point to the other by way of windows that nobody recorded.
    return std::min(from.x, to.x) < corner->dst_x + geometry->width &&
           std::max(from.x, to.x) >= corner->dst_x &&
           std::min(from.y, to.y) < corner->dst_y + geometry->height &&
           std::max(from.y, to.y) >= corner->dst_y;
}

}  // namespace tessellon::x11
