#include "harness/tray.h"

#include "harness/wait.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr std::string_view traySelection = "_NET_SYSTEM_TRAY_S0";

std::vector<std::string> tint2Command(const std::filesystem::path& home, TrayKind kind,
                                      TrayPlace place, TrayTone tone) {
    const auto settings = home / ".config/tint2/tray.conf";
    std::filesystem::create_directories(settings.parent_path());
    std::ofstream(settings) << "rounded = 0\nborder_width = 0\nbackground_color = "
                            << (tone == TrayTone::dark ? "#20242c" : "#eceff4")
                            << " 100\n"
                               "panel_items = TS\n"
                               "panel_size = 100% "
                            << trayHeight
                            << "\npanel_position = " << (place == TrayPlace::top ? "top" : "bottom")
                            << " center horizontal\n"
                               "panel_background_id = 1\n"
                               "strut_policy = follow_size\n"
                               "disable_transparency = "
                            << (kind == TrayKind::tint2 ? 1 : 0)
                            << "\n"
                               "systray_padding = 4 3 4\n"
                               "systray_icon_size = 24\n";
    return {"tint2", "-c", settings};
}

std::vector<std::string> trayerCommand(TrayPlace place, TrayTone tone) {
    // Transparent means that the tint goes over the background of the screen.
    return {"trayer",
            "--edge",
            place == TrayPlace::top ? "top" : "bottom",
            "--align",
            "right",
            "--widthtype",
            "request",
            "--heighttype",
            "pixel",
            "--height",
            std::to_string(trayHeight),
            "--transparent",
            "true",
            "--alpha",
            "0",
            "--tint",
            tone == TrayTone::dark ? "0x20242c" : "0xeceff4",
            "--SetDockType",
            "true",
            "--SetPartialStrut",
            "true"};
}

}  // namespace

std::string trayProgram(TrayKind kind) {
    return kind == TrayKind::trayer ? "trayer" : "tint2";
}

Process& startTray(PrivateDesktop& desktop, TrayKind kind, TrayPlace place, TrayTone tone) {
    auto& tray =
        desktop.start(kind != TrayKind::trayer ? tint2Command(desktop.home(), kind, place, tone)
                                               : trayerCommand(place, tone));
    if (!waitUntil([&] { return desktop.x().selectionOwner(traySelection) != XCB_WINDOW_NONE; })) {
        throw std::runtime_error(trayProgram(kind) + " does not take charge of the tray");
    }
    return tray;
}

void killTray(PrivateDesktop& desktop, Process& tray) {
    tray.kill();
    if (!waitUntil([&] { return desktop.x().selectionOwner(traySelection) == XCB_WINDOW_NONE; })) {
        throw std::runtime_error("the tray is still in charge");
    }
}

}  // namespace tessellon::desktop
