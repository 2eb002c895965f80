// Trays on the X server, as panels that others wrote have them: in a bar along an edge of the
// screen, at its right end.
#pragma once

#include "harness/private_desktop.h"

#include <optional>
#include <string>
#include <string_view>

namespace tessellon::desktop {

enum class TrayKind {
    tint2,             // as it is shipped: its icons have the background of their parent
    tint2Translucent,  // puts icons that have an alpha channel together with its own pixels
    trayer             // of GTK's sockets
};
enum class TrayPlace { top, bottom };
enum class TrayTone { dark, light };

/// Height of the bars, in pixels.
inline constexpr int trayHeight = 30;

/// The program that shows this kind of tray; also the name of its Debian package.
std::string trayProgram(TrayKind kind);

/// Starts a tray and waits until it is in charge of the icons. Throws std::runtime_error when it
/// does not come. It ends with the desktop at the latest.
Process& startTray(PrivateDesktop& desktop, TrayKind kind, TrayPlace place = TrayPlace::top,
                   TrayTone tone = TrayTone::dark);

/// Where the icon of a program is that a tray has taken in and shows; nothing while none has.
/// `windowClass` is the second part of the icon's WM_CLASS.
std::optional<Frame> findTrayIcon(XSession& x, std::string_view windowClass);

/// Ends a tray without a chance to say good-bye, and waits until nobody is in charge of the icons.
void killTray(PrivateDesktop& desktop, Process& tray);

}  // namespace tessellon::desktop
