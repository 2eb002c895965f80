#include "platform/x11/x11_event_taps.h"

#include <algorithm>
#include <utility>

namespace tessellon::x11 {
namespace {

constexpr std::uint32_t rightSuper = 54;  // virtual key codes
constexpr std::uint32_t leftSuper = 55;

}  // namespace

class X11EventTaps::Tap final : public EventTap {
  public:
    Tap(X11EventTaps& taps, std::uint32_t keyCode, std::uint64_t modifiers, Handlers handlers)
        : taps_(taps.self_),
          keyCode_(keyCode),
          modifiers_(modifiers),
          handlers_(std::make_shared<const Handlers>(std::move(handlers))) {
        taps.taps_.push_back(this);
        grab();
    }
    ~Tap() override {
        if (const auto taps = taps_.lock()) {
            ungrab();
            auto& all = (*taps)->taps_;
            all.erase(std::remove(all.begin(), all.end(), this), all.end());
        }
    }
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;

    bool isValid() const override { return grab_.has_value() && !taps_.expired(); }
    bool isEnabled() const override { return isValid(); }
    // The server never switches a grab off; one that is lost is lost for good.
    void enable() override {}

    void grab() {
        const auto taps = taps_.lock();
        const auto& keyboard = (*taps)->keyboard_;
        const auto code = keyboard.keyCode(keyCode_);
        if (!code) {
            return;
        }
        grabbed_ = {.code = *code,
                    .modifiers = keyboard.flagMask(modifiers_),
                    .keyboardMode = XCB_GRAB_MODE_SYNC};
        grab_ = (*taps)->grabs_.grab(grabbed_);
    }

    void ungrab() {
        const auto taps = taps_.lock();
        if (!grab_ || !taps) {
            return;
        }
        grab_.reset();
        if (!(*taps)->deciding_) {
            // A press may wait for an answer that nobody would give now.
            (*taps)->allow(XCB_ALLOW_REPLAY_KEYBOARD);
        }
    }

    bool watches(const xcb_key_press_event_t& event) const {
        return grab_ && grabbed_.code == event.detail &&
               (event.state & grabbed_.modifiers) == grabbed_.modifiers;
    }
    std::uint32_t keyCode() const { return keyCode_; }
    std::shared_ptr<const Handlers> handlers() const { return handlers_; }

  private:
    std::weak_ptr<X11EventTaps*> taps_;
    std::uint32_t keyCode_;
    std::uint64_t modifiers_;
    std::shared_ptr<const Handlers> handlers_;
    KeyGrabs::Combination grabbed_;
    std::optional<Token> grab_;
};

X11EventTaps::X11EventTaps(Connection& connection, Keyboard& keyboard, KeyGrabs& grabs,
                           const RawInput& input)
    : connection_(connection), keyboard_(keyboard), grabs_(grabs), input_(input) {
    listener_ = connection_.addActionListener([this](const auto& event) { onEvent(event); });
    mapping_ = keyboard_.changed().subscribe([this] {
        for (auto* tap : taps_) {
            if (tap->isValid()) {
                tap->ungrab();
                tap->grab();
            }
        }
    });
}

X11EventTaps::~X11EventTaps() {
    for (auto* tap : taps_) {
        tap->ungrab();
    }
}

std::unique_ptr<EventTap> X11EventTaps::create(std::uint32_t keyCode, std::uint64_t modifiers,
                                               Handlers handlers) {
    auto tap = std::make_unique<Tap>(*this, keyCode, modifiers, std::move(handlers));
    return tap->isValid() ? std::move(tap) : nullptr;
}

void X11EventTaps::allow(std::uint8_t mode) const {
    if (answers_ != Answers::byTaps) {
        return;
    }
    // Without effect unless a press of ours is what the keyboard stands still for.
    xcb_allow_events(connection_.xcb(), mode, XCB_CURRENT_TIME);
    xcb_flush(connection_.xcb());
}

void X11EventTaps::onEvent(const xcb_generic_event_t& event) {
    if (eventType(event) == XCB_KEY_PRESS) {
        onPress(eventAs<xcb_key_press_event_t>(event));
    } else if (eventType(event) == XCB_KEY_RELEASE && swallowed_ &&
               swallowed_->code == eventAs<xcb_key_release_event_t>(event).detail) {
        swallowed_.reset();
    }
}

void X11EventTaps::onPress(const xcb_key_press_event_t& event) {
    const auto watching =
        std::find_if(taps_.begin(), taps_.end(), [&](Tap* tap) { return tap->watches(event); });
    const bool isHeld = this->isHeld(event);
    if (watching == taps_.end()) {
        if (isHeld) {
            swallowed_->latest = event.time;  // the modifiers are up and the key still repeats
        }
        return;
    }
    const auto before = std::exchange(swallowed_, Swallowed{event.detail, event.time});
    // A copy: the handler may remove the tap.
    const auto handlers = (*watching)->handlers();
    const auto answers = answers_;
    deciding_ = true;
    const auto verdict = handlers->keyDown({(*watching)->keyCode(), flagsOf(event), isHeld});
    deciding_ = false;
    if (verdict == TapVerdict::pass) {
        swallowed_ = isHeld ? std::nullopt : before;
    }
    if (answers == Answers::byTaps) {
        // After AsyncKeyboard the grab lasts until the key is up: its repeats and its release are
        // ours.
        allow(verdict == TapVerdict::swallow ? XCB_ALLOW_ASYNC_KEYBOARD
                                             : XCB_ALLOW_REPLAY_KEYBOARD);
    }
}

std::optional<xcb_keycode_t> X11EventTaps::heldKey() const {
    return swallowed_ ? std::optional(swallowed_->code) : std::nullopt;
}

bool X11EventTaps::isHeld(const xcb_key_press_event_t& event) const {
    return swallowed_ && swallowed_->code == event.detail &&
           event.time - swallowed_->latest < keyboard_.longestRepeatGap();
}

bool X11EventTaps::hasSwallowed(const xcb_key_press_event_t& event) const {
    return swallowed_ && swallowed_->code == event.detail && swallowed_->latest == event.time;
}

std::uint64_t X11EventTaps::flagsOf(const xcb_key_press_event_t& event) const {
    auto flags = keyboard_.modifierFlags(event.state);
    // The event does not say which of the two command keys is down, the server does: while a press
    // of ours stops the keyboard, later keys wait.
    connection_.countRoundTrip();
    const Reply<xcb_query_keymap_reply_t> keys(xcb_query_keymap_reply(
        connection_.xcb(), xcb_query_keymap_unchecked(connection_.xcb()), nullptr));
    const auto isDown = [&](std::uint32_t virtualKeyCode) {
        const auto code = keyboard_.keyCode(virtualKeyCode);
        return keys && code && (keys->keys[*code / 8U] & (1U << (*code % 8U))) != 0;
    };
    if (isDown(rightSuper)) {
        flags |= modifier_flag::rightCommand;
    } else if (!isDown(leftSuper)) {
        // Both are up already. That happens at the repeats of a swallowed press, which do not stop
        // the keyboard; the modifiers' own events keep their order with this one.
        flags |= input_.modifierFlags() & modifier_flag::rightCommand;
    }
    return flags;
}

}  // namespace tessellon::x11
