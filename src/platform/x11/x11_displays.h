// The displays port on X11: RandR's monitors, less what docks reserve of them.
#pragma once

#include "base/token.h"
#include "platform/displays.h"
#include "platform/x11/window_mirror.h"

#include <optional>
#include <string>
#include <vector>

namespace tessellon::x11 {

/// A monitor in root coordinates (top-left origin).
struct Monitor {
    std::uint64_t id = 0;
    Rect frame;
    std::string outputName;
    std::optional<std::string> uuid;
    std::string productName;
    Size backingScale{1, 1};
    bool primary = false;
};

/// What is left of a monitor when docks have taken their share. `workArea` is the window manager's
/// own idea of it, which can be believed while one monitor is all there is.
Rect visibleArea(const Rect& monitor, const Rect& root,
                 const std::vector<const ClientWindow*>& windows,
                 const std::optional<Rect>& workArea);

class X11Displays : public Displays {
  public:
    X11Displays(Connection& connection, WindowMirror& mirror);

    std::vector<Screen> screens() const override;
    std::optional<Screen> mainScreen() const override;

    /// Height of the primary display, which the flip between the two coordinate spaces turns on;
    /// 0 without one.
    double primaryHeight() const;

  private:
    const std::vector<Monitor>& monitors() const;
    std::vector<Monitor> readMonitors() const;
    void readIdentity(std::vector<Monitor>& monitors,
                      const std::vector<std::uint32_t>& outputs) const;
    Rect rootFrame() const;
    bool isWhole(const Monitor& monitor) const;
    void onEvent(const xcb_generic_event_t& event);

    Connection& connection_;
    WindowMirror& mirror_;
    bool hasRandr_ = false;
    std::uint8_t firstRandrEvent_ = 0;
    mutable std::optional<std::vector<Monitor>> monitors_;  // first the primary one
    Size rootSize_;
    bool announce_ = false;
    Token listener_;
    Token announcer_;
};

}  // namespace tessellon::x11
