// Key combinations that are grabbed for the whole desktop: on the root, and where a window manager
// has the command keys to itself also where it passes the next key on to. For hot keys and taps.
#pragma once

#include "base/token.h"
#include "platform/x11/connection.h"
#include "platform/x11/keyboard.h"
#include "platform/x11/raw_input.h"
#include "platform/x11/window_mirror.h"

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::x11 {

class KeyGrabs {
  public:
    /// All of them must outlive this object.
    KeyGrabs(Connection& connection, const Keyboard& keyboard, WindowMirror& mirror,
             RawInput& input);
    ~KeyGrabs();
    KeyGrabs(const KeyGrabs&) = delete;
    KeyGrabs& operator=(const KeyGrabs&) = delete;

    struct Combination {
        xcb_keycode_t code = 0;
        std::uint16_t modifiers = 0;  // as X has them
        /// XCB_GRAB_MODE_SYNC stops the keyboard at every press.
        std::uint8_t keyboardMode = XCB_GRAB_MODE_ASYNC;
    };

    /// Grabs the combination with every combination of the locks until the token is dropped, which
    /// may outlive this object. Nothing when somebody else holds one of them: the combination is
    /// theirs then. Grabs of our own are never refused.
    std::optional<Token> grab(const Combination& combination);

  private:
    struct Grabbed {
        Combination combination;
        std::vector<std::uint16_t> locks;
        bool withCommand;
    };

    void onEvent(const xcb_generic_event_t& event);
    void onFlagsChanged();
    void follow();
    std::vector<xcb_void_cookie_t> grabOn(xcb_window_t window, const Grabbed& grabbed) const;
    void ungrabOn(xcb_window_t window, const Grabbed& grabbed) const;
    void grabOnActive(const Grabbed& grabbed) const;
    void ungrabOnActive(const Grabbed& grabbed) const;

    Connection& connection_;
    const Keyboard& keyboard_;
    WindowMirror& mirror_;
    RawInput& input_;
    std::list<Grabbed> grabbed_;
    // What contains the active window, where combinations with the command key are grabbed, too.
    xcb_window_t activeTopLevel_ = XCB_WINDOW_NONE;
    xcb_window_t foothold_ = XCB_WINDOW_NONE;
    bool hasFoothold_ = false;
    std::shared_ptr<KeyGrabs*> self_ = std::make_shared<KeyGrabs*>(this);
    Token listener_;
    Token flags_;
};

}  // namespace tessellon::x11
