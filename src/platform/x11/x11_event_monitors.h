// The event-monitor port on X11.
#pragma once

#include "platform/event_monitors.h"
#include "platform/x11/connection.h"
#include "platform/x11/x11_displays.h"

namespace tessellon::x11 {

class X11EventMonitors : public EventMonitors {
  public:
    X11EventMonitors(Connection& connection, const X11Displays& displays)
        : connection_(connection), displays_(displays) {}

    std::optional<Token> addGlobalMonitor(MonitoredEvent event, Callback callback) override;
    std::optional<Token> addLocalMonitor(MonitoredEvent event, Callback callback) override;
    std::optional<Token> addLocalKeyMonitor(KeyHandler handler) override;
    std::optional<Point> pointerLocation() const override;
    std::uint32_t pressedMouseButtons() const override;
    std::uint64_t modifierFlags() const override;

  private:
    Connection& connection_;
    const X11Displays& displays_;
};

}  // namespace tessellon::x11
