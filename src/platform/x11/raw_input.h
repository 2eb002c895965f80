// What the hands do, whatever program or window manager holds pointer and keyboard at the time: the
// raw button events of XInput2 and XKB's modifier state, told in the order they happened.
#pragma once

#include "base/signal.h"
#include "base/token.h"
#include "platform/x11/connection.h"
#include "platform/x11/keyboard.h"

#include <cstdint>
#include <map>
#include <optional>
#include <vector>

#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace tessellon::x11 {

class RawInput {
  public:
    /// Starts listening to buttons and modifiers; motion is listened to only while the left button
    /// is down, so that moving the pointer wakes nobody otherwise.
    RawInput(Connection& connection, const Keyboard& keyboard);
    RawInput(const RawInput&) = delete;
    RawInput& operator=(const RawInput&) = delete;

    /// False when the server does not tell what others' grabs hide; no signal is ever emitted then.
    bool isAvailable() const { return available_; }

    // Signals are emitted from the action side of the connection, never nested in one another, and
    // call those that subscribed earlier first.

    /// The left button went down. Alone of all it is emitted when the event is pulled: nothing that
    /// happened after the press has been heard of yet, and nothing may be done about it.
    const Signal<>& leftPressPulled() const { return leftPressPulled_; }

    /// A button went down, given by its X number after the user's mapping: 1 left, 2 middle, 3
    /// right, 4 to 7 the wheels. isLeftButtonDown is true already when it is the left one.
    const Signal<std::uint32_t>& buttonPressed() const { return buttonPressed_; }
    /// The pointer has moved with the left button down, once or several times.
    const Signal<>& motion() const { return motion_; }
    /// The left button went up. The last motion has been told before, isLeftButtonDown is false.
    const Signal<>& buttonReleased() const { return buttonReleased_; }
    /// A modifier key or a lock went down or up.
    const Signal<>& flagsChanged() const { return flagsChanged_; }

    /// Both as of the event that was told last; neither asks the server.
    bool isLeftButtonDown() const { return (buttons_ & 1U) != 0; }
    /// Bit 0 is the left button, bit 1 the right one, bit 2 the middle one.
    std::uint32_t pressedButtons() const { return buttons_; }
    /// Bits of modifier_flag. rightCommand is known unless the other command key went down first.
    std::uint64_t modifierFlags() const { return flags_; }

    struct Pointer {
        std::int16_t x = 0;
        std::int16_t y = 0;
        /// The topmost child of the root under the pointer; none over the bare root.
        xcb_window_t topLevel = XCB_WINDOW_NONE;
    };
    /// Where the pointer is, in root coordinates; nothing when it is on another X screen. One round
    /// trip.
    std::optional<Pointer> queryPointer();

    /// Where the pointer was as the last press of a button was told.
    const std::optional<Pointer>& pointerAtPress() const { return pointerAtPress_; }

  private:
    enum class Listening { buttons, buttonsAndMotion };

    void listenTo(Listening what);
    void readState();
    void onState(const xcb_generic_event_t& event);
    void onAction(const xcb_generic_event_t& event);
    void press(std::uint32_t button);
    void release(std::uint32_t button);
    void tellMotion();
    void onIdle();
    void modifiersBecame(std::uint16_t state, xcb_keycode_t key, bool pressed);
    std::optional<std::uint16_t> rawEvent(const xcb_generic_event_t& event) const;
    void readMapping(const xcb_input_raw_button_press_event_t& event);
    std::uint32_t mapped(const xcb_input_raw_button_press_event_t& event) const;

    Connection& connection_;
    const Keyboard& keyboard_;
    std::uint8_t opcode_ = 0;
    bool available_ = false;
    std::uint32_t buttons_ = 0;
    std::uint64_t flags_ = 0;
    // By the device that a press came from: what its buttons are for the programs, first button
    // first.
    std::map<xcb_input_device_id_t, std::vector<std::uint8_t>> mappings_;
    bool motionWaits_ = false;
    // The server says that the left button is up, but no event has said so.
    bool releaseSuspected_ = false;
    std::optional<Pointer> pointerAtPress_;
    Signal<> leftPressPulled_;
    Signal<std::uint32_t> buttonPressed_;
    Signal<> motion_;
    Signal<> buttonReleased_;
    Signal<> flagsChanged_;
    Token stateListener_;
    Token actionListener_;
    Token idle_;
};

}  // namespace tessellon::x11
