// The port for what is installed: it turns the hints that a running window gives about its program
// into the program's identity and name.
#pragma once

#include <optional>
#include <string>

namespace tessellon {

struct InstalledApplication {
    /// The desktop-file id without ".desktop" (freedesktop.org Desktop Entry standard), such as
    /// "org.gnome.Calculator".
    std::string identifier;
    /// The Name of the entry in the user's language.
    std::string name;
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
};

}  // namespace tessellon
