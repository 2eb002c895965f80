#include "platform/x11/x11_window_list.h"

namespace tessellon::x11 {
namespace {

// Layers in the manner of a window server: ordinary windows on 0, what floats above them higher.
int layerOf(WindowKind kind) {
    switch (kind) {
        case WindowKind::floating:
            return 3;
        case WindowKind::dock:
            return 20;
        case WindowKind::splash:
            return 25;
        case WindowKind::standard:
        case WindowKind::dialog:
        case WindowKind::desktop:
            break;
    }
    return 0;
}

}  // namespace

std::optional<std::vector<WindowListEntry>> X11WindowList::onScreenWindows() const {
    constexpr std::uint32_t allDesktops = 0xffffffff;
    mirror_.look();
    if (!mirror_.windowManagerAlive()) {
        return std::nullopt;
    }
    const auto current = mirror_.currentDesktop();
    std::vector<WindowListEntry> entries;
    entries.reserve(mirror_.stacking().size());
    for (const auto* window : mirror_.stacking()) {
        // Compositing window managers may keep the windows of other desktops mapped.
        const auto desktop = window->desktop.value_or(current);
        if (window->viewable && window->kind != WindowKind::desktop &&
            (desktop == current || desktop == allDesktops)) {
            entries.push_back({layerOf(window->kind), window->pid, window->visibleFrame()});
        }
    }
    return entries;
}

}  // namespace tessellon::x11
