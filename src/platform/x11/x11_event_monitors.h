// The event-monitor port on X11: raw input told apart by whose window the button went down in.
#pragma once

#include "base/handler_chain.h"
#include "base/signal.h"
#include "platform/event_monitors.h"
#include "platform/x11/connection.h"
#include "platform/x11/raw_input.h"
#include "platform/x11/window_mirror.h"
#include "platform/x11/x11_displays.h"

namespace tessellon::x11 {

class X11EventMonitors : public EventMonitors {
  public:
    X11EventMonitors(Connection& connection, WindowMirror& mirror, const X11Displays& displays,
                     RawInput& input);

    std::optional<Token> addGlobalMonitor(MonitoredEvent event, Callback callback) override;
    std::optional<Token> addLocalMonitor(MonitoredEvent event, Callback callback) override;
    std::optional<Token> addLocalKeyMonitor(KeyHandler handler) override;
    std::optional<Point> pointerLocation() const override;
    std::uint32_t pressedMouseButtons() const override;
    std::uint64_t modifierFlags() const override;

    /// Asks the local key monitors about a key that is meant for a panel of ours.
    KeyVerdict offerKey(const KeyEvent& event) const;

  private:
    enum class Audience { global, local };
    struct Signals {
        Signal<> dragged;
        Signal<> up;
        Signal<> down;
        Signal<> flags;
    };

    const Signals& ofDrag() const { return dragAudience_ == Audience::local ? local_ : global_; }
    void onEvent(const xcb_generic_event_t& event);
    void onMotion();
    void onIdle();
    static const Signal<>& signalFor(const Signals& signals, MonitoredEvent event);
    Callback sinceNow(Callback callback) const;
    Audience audienceOfPress() const;
    bool belongsToUs(xcb_window_t topLevel) const;

    Connection& connection_;
    WindowMirror& mirror_;
    const X11Displays& displays_;
    RawInput& input_;
    Signals global_;
    Signals local_;
    Audience dragAudience_ = Audience::global;
    // With the left button down.
    bool hasMoved_ = false;
    bool windowFollows_ = false;
    HandlerChain<KeyVerdict, KeyEvent> keyHandlers_;
    Token pressed_;
    Token motion_;
    Token released_;
    Token flags_;
    Token listener_;
    Token idle_;
};

}  // namespace tessellon::x11
