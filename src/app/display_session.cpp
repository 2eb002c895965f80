#include "app/display_session.h"

#include "base/log.h"
#include "platform/linux/environment.h"
#include "platform/linux/session_service.h"

#include <cstdlib>

namespace tessellon {
namespace {

/// For each way of asking.
constexpr Seconds runningInstanceTimeout{2};

/// Has the instance that runs show itself; false when it does not answer. Its display is where the
/// user is, so it is asked there first; the session bus may know an instance of another display.
bool showRunningInstance(x11::InstanceLock& lock) {
    return lock.askHolder(runningInstanceTimeout) ||
           activateRunningInstance(environment("DISPLAY"), runningInstanceTimeout);
}

}  // namespace

bool isWaylandSession() {
    return !environment("WAYLAND_DISPLAY").empty() || environment("XDG_SESSION_TYPE") == "wayland";
}

void explainMissingDisplay() {
    const auto display = environment("DISPLAY");
    if (isWaylandSession() && display.empty()) {
        logError(
            "this Wayland session has no X11 display, and only X11 programs' windows can be "
            "moved; enable Xwayland or log in to an X11 session");
    } else if (display.empty()) {
        logError("there is no display: DISPLAY is not set; start tessellon in an X11 session");
    } else {
        logError("cannot connect to the X11 display '" + display +
                 "'; check that it is running and that you may use it (DISPLAY, XAUTHORITY)");
    }
}

std::optional<int> takeDisplay(x11::InstanceLock& lock) {
    if (lock.acquire()) {
        return std::nullopt;
    }
    if (showRunningInstance(lock)) {
        return EXIT_SUCCESS;
    }
    // Unless it has ended meanwhile.
    if (lock.acquire()) {
        return std::nullopt;
    }
    logError("another instance is running on this display already, and does not answer");
    return exitCannotRun;
}

}  // namespace tessellon
