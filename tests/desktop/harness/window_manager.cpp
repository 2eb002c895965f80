#include "harness/window_manager.h"

#include "harness/window_manager_settings.h"

#include <stdexcept>

namespace tessellon::desktop {

const std::vector<WindowManager>& windowManagers() {
    static const std::vector<WindowManager> table{
        {.name = "openbox",
         .package = "openbox",
         .command = {"openbox"},
         .configure = configureOpenbox},
        {.name = "xfwm4",
         .package = "xfwm4",
         .command = {"xfwm4"},
         .monitorsDescribed = MonitorsDescribed::afterStart,
         .configure = configureXfwm4},
        {.name = "metacity",
         .package = "metacity",
         .command = {"metacity"},
         .frameWindow = FrameWindow::oversized,
         .configure = configureMetacity},
        {.name = "marco",
         .package = "marco",
         .command = {"marco"},
         .frameWindow = FrameWindow::oversized,
         .configure = configureMarco},
        {.name = "muffin",
         .package = "muffin",
         .command = {"muffin"},
         .frameWindow = FrameWindow::oversized,
         .configure = configureMuffin},
        {.name = "mutter",
         .package = "mutter",
         .command = {"mutter", "--x11"},
         .frameWindow = FrameWindow::oversized,
         .configure = configureMutter},
        {.name = "kwin",
         .package = "kwin-x11",
         .command = {"kwin_x11"},
         .configure = configureKwin},
        {.name = "fluxbox",
         .package = "fluxbox",
         .command = {"fluxbox"},
         .configure = configureFluxbox},
        {.name = "icewm", .package = "icewm", .command = {"icewm"}, .configure = configureIcewm},
        {.name = "jwm", .package = "jwm", .command = {"jwm"}, .configure = configureJwm},
        {.name = "i3",
         .package = "i3-wm",
         .command = {"i3"},
         .frameWindow = FrameWindow::unannounced,
         .desktopsMade = DesktopsMade::whenShown,
         .configure = configureI3},
    };
    return table;
}

const WindowManager& windowManager(std::string_view name) {
    for (const WindowManager& candidate : windowManagers()) {
        if (candidate.name == name) {
            return candidate;
        }
    }
    throw std::out_of_range("no window manager is known as " + std::string(name));
}

}  // namespace tessellon::desktop
