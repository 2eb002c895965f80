#include "harness/window_manager.h"

#include <fstream>
#include <stdexcept>

namespace tessellon::desktop {
namespace {

namespace fs = std::filesystem;

void writeFile(const fs::path& path, std::string_view text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

void configureOpenbox(const fs::path& home, WindowManagerKeys keys) {
    if (keys == WindowManagerKeys::asShipped) {
        return;  // falls back to the file of the system
    }
    writeFile(home / ".config/openbox/rc.xml", R"(<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><focusNew>yes</focusNew></focus>
  <theme><name>Clearlooks</name><titleLayout>NLIMC</titleLayout></theme>
  <desktops><number>2</number></desktops>
  <keyboard/>
</openbox_config>
)");
}

void configureXfwm4(const fs::path& home, WindowManagerKeys keys) {
    if (keys == WindowManagerKeys::asShipped) {
        return;
    }
    writeFile(home / ".config/xfce4/xfconf/xfce-perchannel-xml/xfce4-keyboard-shortcuts.xml",
              R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-keyboard-shortcuts" version="1.0">
  <property name="xfwm4" type="empty">
    <property name="custom" type="empty">
      <property name="override" type="bool" value="true"/>
      <property name="Escape" type="string" value="cancel_key"/>
    </property>
  </property>
</channel>
)");
}

void configureMetacity(const fs::path& home, WindowManagerKeys keys) {
    if (keys == WindowManagerKeys::asShipped) {
        return;
    }
    writeFile(home / ".config/glib-2.0/settings/keyfile", R"([org/gnome/desktop/wm/keybindings]
switch-to-workspace-left=@as []
switch-to-workspace-right=@as []
switch-to-workspace-up=@as []
switch-to-workspace-down=@as []
)");
}

void configureIcewm(const fs::path& home, WindowManagerKeys keys) {
    // Its own panel would take room at the bottom without saying so in a strut of its own.
    std::string preferences = "ShowTaskBar=0\n";
    if (keys == WindowManagerKeys::released) {
        preferences += "Win95Keys=0\n";
        for (const char* key :
             {"WorkspacePrev", "WorkspaceNext", "WorkspaceLast", "Workspace1", "Workspace2",
              "Workspace3", "Workspace4", "ShowDesktop", "CollapseTaskBar"}) {
            preferences += "KeySys" + std::string(key) + "=\"\"\n";
        }
        writeFile(home / ".icewm/keys", "");
    }
    writeFile(home / ".icewm/preferences", preferences);
}

void configureKwin(const fs::path& home, WindowManagerKeys keys) {
    // Without a graphics card it would spend its time on drawing everything itself.
    writeFile(home / ".config/kwinrc",
              "[Compositing]\nEnabled=false\n\n[Desktops]\nNumber=2\nRows=1\n");
    if (keys == WindowManagerKeys::asShipped) {
        return;
    }
    std::string shortcuts = "[kwin]\n";
    for (const char* direction : {"Left", "Right", "Up", "Down"}) {
        shortcuts += "Switch Window " + std::string(direction) + "=none,none,\n";
    }
    writeFile(home / ".config/kglobalshortcutsrc", shortcuts);
}

}  // namespace

const std::vector<WindowManager>& windowManagers() {
    static const std::vector<WindowManager> table{
        {.name = "openbox", .command = {"openbox"}, .configure = configureOpenbox},
        {.name = "xfwm4",
         .command = {"xfwm4"},
         .monitorsDescribed = MonitorsDescribed::afterStart,
         .configure = configureXfwm4},
        {.name = "metacity",
         .command = {"metacity"},
         .frameWindow = FrameWindow::oversized,
         .configure = configureMetacity},
        {.name = "icewm", .command = {"icewm"}, .configure = configureIcewm},
        {.name = "kwin", .command = {"kwin_x11"}, .configure = configureKwin},
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
