// The port through which running applications are known.
#pragma once

#include "platform/types.h"

#include <optional>
#include <string>
#include <vector>

namespace tessellon {

enum class ActivationPolicy {
    regular,    // has windows that the user works with
    accessory,  // shows docks, desktops, tray icons and the like only
};

struct RunningApplication {
    Pid pid = 0;
    /// Stable identity across launches; nothing for programs that have none. On X11 the id of the
    /// desktop entry (without ".desktop"), else the window class.
    std::optional<std::string> bundleIdentifier;
    /// For people, in their language.
    std::string localizedName;
    ActivationPolicy policy = ActivationPolicy::regular;
    bool hidden = false;
    bool operator==(const RunningApplication&) const = default;
};

class Applications {
  public:
    virtual ~Applications() = default;

    /// All running applications, in the order they were started as far as the desktop knows.
    virtual std::vector<RunningApplication> running() const = 0;

    /// The running application with this process id, or nothing.
    virtual std::optional<RunningApplication> withPid(Pid pid) const = 0;

    /// The application whose window has the keyboard, or nothing.
    virtual std::optional<RunningApplication> frontmost() const = 0;

    /// Brings an application's window that was used last to the front and gives it the keyboard.
    /// Nothing happens when it is in front already, or has no window.
    virtual void activate(Pid pid) = 0;

    /// This program's own process id.
    virtual Pid ownPid() const = 0;
};

}  // namespace tessellon
