// The event-tap port on X11: a synchronous passive grab of the key, so that the keyboard stands
// still while the handler decides, and the key can be given on as if nobody had looked.
#pragma once

#include "platform/event_tap.h"
#include "platform/x11/connection.h"
#include "platform/x11/key_grabs.h"
#include "platform/x11/keyboard.h"
#include "platform/x11/raw_input.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::x11 {

class X11EventTaps : public EventTaps {
  public:
    X11EventTaps(Connection& connection, Keyboard& keyboard, KeyGrabs& grabs,
                 const RawInput& input);
    ~X11EventTaps() override;

    /// Grabs the key with exactly these modifiers and every combination of the locks; with more
    /// modifiers it is seen only while this program has the whole keyboard.
    std::unique_ptr<EventTap> create(std::uint32_t keyCode, std::uint64_t modifiers,
                                     Handlers handlers) override;

    /// Who tells the server to go on after a key has stopped the keyboard: this object while only
    /// its own grabs stop it, whoever has grabbed the whole keyboard for this program otherwise.
    enum class Answers { byTaps, byHolder };
    void setAnswers(Answers answers) { answers_ = answers; }

    /// Whether a tap has kept this key press, so that it must not be used for anything else.
    bool hasSwallowed(const xcb_key_press_event_t& event) const;

    /// The swallowed key that has not come up yet.
    std::optional<xcb_keycode_t> heldKey() const;

  private:
    class Tap;
    struct Swallowed {
        xcb_keycode_t code = 0;
        xcb_timestamp_t latest = 0;  // its press or its latest repeat
    };

    void onEvent(const xcb_generic_event_t& event);
    void onPress(const xcb_key_press_event_t& event);
    std::uint64_t flagsOf(const xcb_key_press_event_t& event) const;
    void allow(std::uint8_t mode) const;
    bool isHeld(const xcb_key_press_event_t& event) const;

    Connection& connection_;
    Keyboard& keyboard_;
    KeyGrabs& grabs_;
    const RawInput& input_;
    std::vector<Tap*> taps_;
    Answers answers_ = Answers::byTaps;
    bool deciding_ = false;
    std::optional<Swallowed> swallowed_;
    // Taps may outlive this object.
    std::shared_ptr<X11EventTaps*> self_ = std::make_shared<X11EventTaps*>(this);
    Token listener_;
    Token mapping_;
};

}  // namespace tessellon::x11
