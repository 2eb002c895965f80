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

std::vector<xcb_window_t> childrenOf(XSession& x, xcb_window_t window) {
    const Reply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x.connection(), xcb_query_tree(x.connection(), window), nullptr));
    if (!tree) {
        return {};
    }
    const auto* const first = xcb_query_tree_children(tree.get());
    return {first, first + xcb_query_tree_children_length(tree.get())};
}

std::optional<xcb_window_t> findBelow(XSession& x, xcb_window_t window,
                                      std::string_view windowClass) {
    for (const xcb_window_t child : childrenOf(x, window)) {
        if (x.bytes(child, "WM_CLASS").ends_with(windowClass)) {
            return child;
        }
        if (const auto found = findBelow(x, child, windowClass)) {
            return found;
        }
    }
    return std::nullopt;
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

std::optional<Frame> findTrayIcon(XSession& x, std::string_view windowClass) {
    const std::string ending = '\0' + std::string(windowClass) + '\0';
    for (const xcb_window_t topLevel : childrenOf(x, x.root())) {
        const auto icon = findBelow(x, topLevel, ending);
        if (!icon) {
            continue;
        }
        auto* const xcb = x.connection();
        const Reply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, *icon), nullptr));
        const Reply<xcb_get_geometry_reply_t> geometry(
            xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, *icon), nullptr));
        const Reply<xcb_translate_coordinates_reply_t> origin(xcb_translate_coordinates_reply(
            xcb, xcb_translate_coordinates(xcb, *icon, x.root(), 0, 0), nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE && geometry && origin) {
            return Frame{origin->dst_x, origin->dst_y, geometry->width, geometry->height};
        }
    }
    return std::nullopt;
}

void killTray(PrivateDesktop& desktop, Process& tray) {
    tray.kill();
    if (!waitUntil([&] { return desktop.x().selectionOwner(traySelection) == XCB_WINDOW_NONE; })) {
        throw std::runtime_error("the tray is still in charge");
    }
}

}  // namespace tessellon::desktop
