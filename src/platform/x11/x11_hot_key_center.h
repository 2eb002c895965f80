// The hot-key port on X11: passive grabs of the key.
#pragma once

#include "base/handler_chain.h"
#include "platform/hot_key_center.h"
#include "platform/x11/connection.h"
#include "platform/x11/key_grabs.h"
#include "platform/x11/keyboard.h"

#include <cstdint>
#include <list>
#include <memory>
#include <optional>

namespace tessellon::x11 {

class X11HotKeyCenter : public HotKeyCenter {
  public:
    X11HotKeyCenter(Connection& connection, Keyboard& keyboard, KeyGrabs& grabs);

    Token installHandler(Handler handler) override;
    std::optional<Token> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                        HotKeyId id) override;

    /// Whether this press is that of a registered combination.
    bool isRegistered(const xcb_key_press_event_t& event) const;

  private:
    struct HotKey {
        HotKeyId id;
        xcb_keycode_t code = 0;
        std::uint16_t mask = 0;
        Token grab;
    };

    void onEvent(const xcb_generic_event_t& event);
    void press(const xcb_key_press_event_t& event);
    std::list<HotKey>::const_iterator find(const xcb_key_press_event_t& event) const;

    Keyboard& keyboard_;
    KeyGrabs& grabs_;
    std::list<HotKey> keys_;
    HandlerChain<HotKeyEventStatus, std::optional<HotKeyId>> handlers_;
    std::optional<xcb_keycode_t> heldKey_;  // of a registered combination
    xcb_timestamp_t heldSince_ = 0;         // its latest press or repeat
    // Tokens of registrations may outlive the center.
    std::shared_ptr<X11HotKeyCenter*> self_ = std::make_shared<X11HotKeyCenter*>(this);
    Token listener_;
    Token mapping_;
};

}  // namespace tessellon::x11
