// The user's hands on the desktop in memory: a pointer with a button, modifier keys, and keys typed
// into our own panels, all moved by calls.
#pragma once

#include "base/handler_chain.h"
#include "base/signal.h"
#include "platform/event_monitors.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <set>

namespace tessellon {

class MemoryDesktop;

class MemoryEventMonitors final : public EventMonitors {
  public:
    explicit MemoryEventMonitors(const MemoryDesktop& desktop) : desktop_(desktop) {}

    std::optional<Token> addGlobalMonitor(MonitoredEvent event, Callback callback) override;
    std::optional<Token> addLocalMonitor(MonitoredEvent event, Callback callback) override;
    std::optional<Token> addLocalKeyMonitor(KeyHandler handler) override;
    std::optional<Point> pointerLocation() const override;
    std::uint32_t pressedMouseButtons() const override { return buttons_; }
    std::uint64_t modifierFlags() const override { return modifiers_; }

    /// Whose event it is.
    enum class Scope { global, local };

    /// From now on the desktop refuses monitors of this event.
    void refuse(MonitoredEvent event) { refused_.insert(event); }

    /// Changes the state without telling anybody, as when an event gets lost.
    void setPressedMouseButtons(std::uint32_t buttons) { buttons_ = buttons; }
    void setModifierFlags(std::uint64_t flags) { modifiers_ = flags; }

    /// Tells the monitors of an event.
    void emit(MonitoredEvent event, Scope scope = Scope::global);

    /// Types a key into our own panel; notUsed when the panel itself has to deal with it.
    KeyVerdict type(const KeyEvent& event);

    std::size_t keyMonitorCount() const { return keyHandlers_.size(); }

  private:
    const MemoryDesktop& desktop_;
    std::uint32_t buttons_ = 0;
    std::uint64_t modifiers_ = 0;
    std::set<MonitoredEvent> refused_;
    std::map<MonitoredEvent, Signal<>> global_;
    std::map<MonitoredEvent, Signal<>> local_;
    HandlerChain<KeyVerdict, KeyEvent> keyHandlers_;
};

}  // namespace tessellon
