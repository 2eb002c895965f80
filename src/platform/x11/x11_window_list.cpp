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
        case WindowKind::passing:
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
    mirror_.look();
    if (!mirror_.windowManagerAlive()) {
        return std::nullopt;
    }
    std::vector<WindowListEntry> entries;
    entries.reserve(mirror_.stacking().size());
    for (const auto* window : mirror_.stacking()) {
        if (window->viewable && window->kind != WindowKind::desktop &&
            mirror_.isOnCurrentDesktop(*window)) {
            entries.push_back({layerOf(window->kind), window->pid, window->visibleFrame()});
        }
    }
    return entries;
}

}  // namespace tessellon::x11
