#include "harness/window_manager_settings.h"

#include <array>
#include <fstream>
#include <string>
#include <string_view>

namespace tessellon::desktop {
namespace {

namespace fs = std::filesystem;

// Where GLib keeps settings as plain text, in the environment that private desktops have.
constexpr const char* glibSettings = ".config/glib-2.0/settings/keyfile";

constexpr std::array directions{"left", "right", "up", "down"};

void writeFile(const fs::path& path, std::string_view text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path) << text;
}

}  // namespace

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
    writeFile(home / glibSettings, R"([org/gnome/desktop/wm/keybindings]
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

void configureMarco(const fs::path& home, WindowManagerKeys keys) {
    // Without a graphics card it would spend its time on drawing everything itself.
    std::string settings =
        "[org/mate/marco/general]\nnum-workspaces=2\ncompositing-manager=false\n";
    if (keys == WindowManagerKeys::released) {
        settings += "\n[org/mate/marco/global-keybindings]\nshow-desktop='disabled'\n";
        for (const char* direction : directions) {
            settings += "switch-to-workspace-" + std::string(direction) + "='disabled'\n";
        }
    }
    writeFile(home / glibSettings, settings);
}

void configureMuffin(const fs::path& home, WindowManagerKeys keys) {
    std::string settings = "[org/cinnamon/desktop/wm/preferences]\nnum-workspaces=2\n";
    if (keys == WindowManagerKeys::released) {
        settings += "\n[org/cinnamon/desktop/keybindings/wm]\n";
        for (const char* direction : directions) {
            settings += "switch-to-workspace-" + std::string(direction) + "=@as []\n";
        }
    }
    writeFile(home / glibSettings, settings);
}

void configureMutter(const fs::path& home, WindowManagerKeys keys) {
    std::string settings = "[org/gnome/desktop/wm/preferences]\nnum-workspaces=2\n";
    if (keys == WindowManagerKeys::released) {
        settings += "\n[org/gnome/desktop/wm/keybindings]\n";
        for (const char* direction : directions) {
            settings += "switch-to-workspace-" + std::string(direction) + "=@as []\n";
        }
        settings += "\n[org/gnome/mutter]\noverlay-key=''\n";
    }
    writeFile(home / glibSettings, settings);
}

void configureFluxbox(const fs::path& home, WindowManagerKeys keys) {
    // Its own panel would take room without saying so in a strut of its own, and keep a tray though
    // nobody sees it; the picture that its style wants for a background needs a program to show it.
    writeFile(home / ".fluxbox/init",
              "session.configVersion: 13\n"
              "session.keyFile: ~/.fluxbox/keys\n"
              "session.styleFile: /usr/share/fluxbox/styles/bloe\n"
              "session.styleOverlay: ~/.fluxbox/overlay\n"
              "session.screen0.toolbar.visible: false\n"
              "session.screen0.toolbar.tools: clock\n"
              "session.screen0.workspaces: 2\n");
    writeFile(home / ".fluxbox/overlay", "background: none\n");
    if (keys == WindowManagerKeys::asShipped) {
        fs::copy_file("/etc/X11/fluxbox/keys", home / ".fluxbox/keys",
                      fs::copy_options::overwrite_existing);
        return;
    }
    // What moves and activates windows by the mouse is in the same file.
    writeFile(home / ".fluxbox/keys",
              "OnTitlebar Mouse1 :MacroCmd {Raise} {Focus} {ActivateTab}\n"
              "OnTitlebar Move1 :StartMoving\n"
              "OnLeftGrip Move1 :StartResizing bottomleft\n"
              "OnRightGrip Move1 :StartResizing bottomright\n"
              "OnWindow Mod1 Mouse1 :MacroCmd {Raise} {Focus} {StartMoving}\n"
              "OnWindow Mod1 Mouse3 :MacroCmd {Raise} {Focus} {StartResizing NearestCorner}\n");
}

void configureJwm(const fs::path& home, WindowManagerKeys keys) {
    // A file of the user's replaces that of the system whole, its panel included.
    std::string settings =
        "<?xml version=\"1.0\"?>\n<JWM>\n"
        "<Desktops width=\"2\" height=\"1\"/>\n"
        "<FocusModel>click</FocusModel>\n"
        "<MoveMode>opaque</MoveMode>\n"
        "<ResizeMode>opaque</ResizeMode>\n";
    if (keys == WindowManagerKeys::asShipped) {
        settings +=
            "<Key mask=\"A\" key=\"Tab\">nextstacked</Key>\n"
            "<Key mask=\"A\" key=\"F4\">close</Key>\n"
            "<Key mask=\"A\" key=\"#\">desktop#</Key>\n";
    }
    writeFile(home / ".jwmrc", settings + "</JWM>\n");
}

void configureI3(const fs::path& home, WindowManagerKeys keys) {
    std::string settings =
        "# i3 config file (v4)\n"
        "font pango:DejaVu Sans 10\n"
        "floating_modifier Mod1\n"
        "for_window [class=\".*\"] floating enable\n";
    if (keys == WindowManagerKeys::asShipped) {
        settings += "bindsym Mod1+d exec true\n";
    }
    writeFile(home / ".config/i3/config", settings);
}

}  // namespace tessellon::desktop
