// The port for what is installed: it turns the hints that a running window gives about its program
// into the program's identity and name.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

struct InstalledApplication {
    /// The desktop-file id without ".desktop" (freedesktop.org Desktop Entry standard), such as
    /// "org.gnome.Calculator".
    std::string identifier;
    /// The Name of the entry in the user's language.
    std::string name;
    /// The name or the absolute path of its icon; empty when it has none.
    std::string icon{};
    bool operator==(const InstalledApplication&) const = default;
};

/// What a window tells about its program; texts are empty where it tells nothing.
struct ApplicationHints {
    std::string gtkApplicationId;  // _GTK_APPLICATION_ID
    std::string windowInstance;    // first part of WM_CLASS
    std::string windowClass;       // second part of WM_CLASS
    std::string executable;        // absolute path of the process's program
    bool operator==(const ApplicationHints&) const = default;
};

class ApplicationDirectory {
  public:
    virtual ~ApplicationDirectory() = default;

    /// The installed application that the hints point at, or nothing. The first of these that
    /// matches counts: the GTK application id, the StartupWMClass of an entry, an entry named like
    /// the window class, an entry that runs the executable.
    virtual std::optional<InstalledApplication> lookUp(const ApplicationHints& hints) const = 0;

    /// The application with exactly this identifier, whether menus show it or not; or nothing.
    virtual std::optional<InstalledApplication> withIdentifier(
        std::string_view identifier) const = 0;

    /// The application of exactly this name, in the user's language or in that of the entry.
    /// Applications for all users come before the user's own. Nothing when there is none.
    virtual std::optional<InstalledApplication> named(std::string_view name) const = 0;

    /// The applications that menus show, by name in the order of the user's language.
    virtual std::vector<InstalledApplication> shown() const = 0;
};

}  // namespace tessellon
