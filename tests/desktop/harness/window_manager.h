// The window managers that the program is tested under: how each is started without a screen, and
// the settings it gets so that the tests own the keyboard.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon::desktop {

/// Whether a window manager keeps the key combinations it comes with.
enum class WindowManagerKeys { released, asShipped };

/// Where the edges of the window that a window manager puts around a client are.
enum class FrameWindow {
    visible,     // its geometry is what the user sees
    oversized,   // it reaches beyond what is drawn, to make the edges easier to grab
    unannounced  // its geometry is what the user sees, and clients are not told of its edges
};

/// When a window manager has to learn of monitors that are described by hand.
enum class MonitorsDescribed {
    beforeStart,
    afterStart  // at its start it would take the first one for the whole screen
};

/// When the second desktop comes into being.
enum class DesktopsMade {
    atStart,
    whenShown  // by a request of the window manager's own
};

struct WindowManager {
    std::string_view name;
    /// The Debian package that it is in.
    std::string_view package;
    std::vector<std::string> command;
    FrameWindow frameWindow = FrameWindow::visible;
    DesktopsMade desktopsMade = DesktopsMade::atStart;
    MonitorsDescribed monitorsDescribed = MonitorsDescribed::beforeStart;
    /// Writes its settings below a private home folder.
    void (*configure)(const std::filesystem::path& home, WindowManagerKeys keys) = nullptr;
};

/// Every window manager that the tests know.
const std::vector<WindowManager>& windowManagers();

/// Throws std::out_of_range for a name that is not in the table.
const WindowManager& windowManager(std::string_view name);

}  // namespace tessellon::desktop
