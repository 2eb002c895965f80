// The keyboard-focus port on X11: an active grab of the keyboard, which leaves the focus and the
// active window where they are.
//
// The grab is synchronous: the keyboard stops at every event until we have answered it. What was
// typed after the key that ends the grab is therefore still with the server then, and goes to the
// program in front. The server lifts the grab when this program dies.
#pragma once

#include "platform/keyboard_focus.h"
#include "platform/run_loop.h"
#include "platform/x11/connection.h"
#include "platform/x11/key_text.h"
#include "platform/x11/keyboard.h"
#include "platform/x11/raw_input.h"
#include "platform/x11/x11_event_monitors.h"
#include "platform/x11/x11_event_taps.h"
#include "platform/x11/x11_hot_key_center.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>

#include <xcb/xcb.h>

namespace tessellon::x11 {

class X11KeyboardFocus : public KeyboardFocus {
  public:
    /// Everything a key goes through before a panel gets it. Made before this object and living
    /// longer, so that each has seen a key already when it is looked at here.
    struct Services {
        Connection& connection;
        const Keyboard& keyboard;
        X11EventTaps& taps;
        const X11HotKeyCenter& hotKeys;
        const X11EventMonitors& monitors;
        const RawInput& input;
        RunLoop& loop;
    };

    explicit X11KeyboardFocus(Services services);
    ~X11KeyboardFocus() override;

    Token take(const Rect& panelFrame, Receiver receiver) override;

  private:
    struct Scene {
        xcb_window_t activeWindow = XCB_WINDOW_NONE;
        std::uint32_t workspace = 0;
        Point pointer;  // root coordinates
    };
    struct Holder {
        std::uint64_t id = 0;
        Rect panelFrame;
        std::shared_ptr<const Receiver> receiver;
        std::uint32_t since = 0;  // a mark of the connection
        Scene scene;              // as of the activation that was looked at last
        KeyText text;
        std::set<xcb_keycode_t> pressed;
        std::set<xcb_keycode_t> given;  // those of them that the receiver knows of
        Token retry;
        Seconds giveUpAt{};
    };
    enum class Grab {
        none,
        held,
        // Until the keys that went down for a panel are up again, so that neither their repeats nor
        // their releases reach the program in front.
        lingering,
    };

    bool tryGrab();
    void retry();
    void drop(std::uint64_t id);
    void letGo();
    void forgetKeysThatAreUp();
    void lose();
    void release();
    void allow(std::uint8_t mode);
    bool isFromGrab(const xcb_generic_event_t& event) const;
    const xcb_key_press_event_t* pressAtHand() const;
    void onEvent(const xcb_generic_event_t& event);
    void onKey(const xcb_generic_event_t& event);
    void onPress(const xcb_key_press_event_t& event);
    void onRelease(const xcb_key_release_event_t& event);
    void lingerAtPress(const xcb_key_press_event_t& event);
    void onButton(std::uint32_t button);
    Scene lookAtScene() const;
    void onSceneChange();
    bool isTouched(xcb_window_t window, Point from, Point to) const;

    Services services_;
    std::optional<Holder> holder_;
    Grab grab_ = Grab::none;
    std::uint32_t grabRequest_ = 0;  // its sequence number
    // All but modifiers that went down for us.
    std::set<xcb_keycode_t> down_;
    std::uint64_t nextId_ = 1;
    std::map<std::uint64_t, Token> replaced_;  // those that are still to hear of it
    // Tokens may outlive this object.
    std::shared_ptr<X11KeyboardFocus*> self_ = std::make_shared<X11KeyboardFocus*>(this);
    Token listener_;
    Token buttons_;
};

}  // namespace tessellon::x11
