// What keys type: their symbols and text in the layout that is in use, with dead keys and compose
// sequences put together.
#pragma once

#include "platform/key_event.h"
#include "platform/x11/keyboard.h"

#include <cstdint>
#include <memory>
#include <string>

#include <xcb/xcb.h>

struct xkb_compose_state;
struct xkb_keymap;
struct xkb_state;

namespace tessellon::x11 {

class KeyText {
  public:
    explicit KeyText(const Keyboard& keyboard);

    struct Typed {
        KeyEvent event;
        /// With all modifiers; 0 when the key has none.
        std::uint32_t symbol = 0;
    };

    /// What a key press types. To be asked once for each press, in order, since dead keys wait for
    /// the next one.
    Typed press(const xcb_key_press_event_t& event);

    /// What a key release is about; it types nothing.
    Typed release(const xcb_key_release_event_t& event);

    /// Whether the key that is pressed or released only changes what others mean.
    bool isModifier(const xcb_key_press_event_t& event);

  private:
    void followKeyboard();
    Typed describe(const xcb_key_press_event_t& event);
    void setState(std::uint16_t state);
    std::string textWith(xcb_keycode_t code, std::uint16_t state);
    std::string textIgnoringModifiers(const xcb_key_press_event_t& event);
    bool typesLatinQ(std::uint16_t state);
    void compose(Typed& typed);

    const Keyboard& keyboard_;
    std::shared_ptr<xkb_keymap> keymap_;
    std::shared_ptr<xkb_state> state_;
    std::shared_ptr<xkb_compose_state> compose_;
};

}  // namespace tessellon::x11
