#include "engine/window_engine.h"

#include "app/preferences.h"
#include "engine/placement.h"

#include <algorithm>
#include <utility>

namespace tessellon {
namespace {

/// The place of window `index` of `count` when a display is tiled: the first takes `masterShare` of
/// the width, the others share the rest in rows.
Rect tileUnit(std::size_t index, std::size_t count, double masterShare) {
    if (count == 1) {
        return {0, 0, 1, 1};
    }
    if (index == 0) {
        return {0, 0, masterShare, 1};
    }
    const auto rows = static_cast<double>(count - 1);
    return {masterShare, static_cast<double>(index - 1) / rows, 1 - masterShare, 1 / rows};
}

}  // namespace

WindowEngine::WindowEngine(const EngineServices& services)
    : services_(services),
      windows_(services),
      screens_(services.displays, services.defaults),
      memory_(windows_, services.applications, services.defaults) {}

WindowEngine::Reads WindowEngine::beginReads() const {
    return {services_.accessibility.beginReads(), screens_.beginReads()};
}

void WindowEngine::snap(SnapAction action) {
    if (services_.defaults.boolForKey(preference::paused)) {
        return;
    }
    const auto reads = beginReads();
    const auto window = windows_.focusedWindow();
    if (!window) {
        return;
    }
    if (const auto current = windows_.readFrame(*window)) {
        perform(cycled(action, *current), *window, *current);
    }
}

void WindowEngine::snap(SnapAction action, const Element& window) {
    if (services_.defaults.boolForKey(preference::paused)) {
        return;
    }
    const auto reads = beginReads();
    if (const auto current = windows_.readFrame(window)) {
        perform(action, window, *current);
    }
}

SnapAction WindowEngine::cycled(SnapAction action, const Rect& current) const {
    if (!last_ || !nearlyEqual(last_->frame, current, frameTolerance) ||
        !services_.defaults.boolForKey(preference::cycle)) {
        return action;
    }
    return cycleSuccessor(last_->action, action).value_or(action);
}

void WindowEngine::perform(SnapAction action, const Element& window, const Rect& current) {
    const auto target = targetFrame(action, window, current);
    if (!target) {
        return;
    }
    // Nothing is encoded or stored before the window has moved.
    const auto saves = memory_.deferSaves();
    if (action == SnapAction::restore) {
        memory_.forgetWindow(window);
    } else if (!memory_.findMemory(window)) {
        memory_.rememberWindow(current, window);
    }
    windows_.setFrame(*target, window);
    const Rect result = windows_.readFrame(window).value_or(*target);
    if (action != SnapAction::restore) {
        memory_.updateMemory(result, window);
    }
    last_ = LastAction{action, result};

    auto owner = windows_.owner(window);
    auto screen = screens_.screenFor(*target);
    lastSnap_ = LastSnap{action, owner ? std::move(owner->localizedName) : "Window",
                         screen ? std::move(screen->localizedName) : ""};
}

std::optional<Rect> WindowEngine::targetFrame(SnapAction action, const Element& window,
                                              const Rect& current) {
    const auto screen = screens_.screenFor(current);
    if (!screen) {
        return std::nullopt;
    }
    if (action == SnapAction::restore) {
        return memory_.originalFrame(window);
    }
    const Rect area = screens_.usableFrame(*screen);
    if (const auto unit = unitRect(action)) {
        return placeUnit(*unit, area, effectiveGap(services_.defaults));
    }
    if (action == SnapAction::almostMaximize) {
        return placeWithMargin(area, effectiveAlmostPadding(services_.defaults));
    }
    if (action == SnapAction::center) {
        return placeCentered(current, area);
    }

    const auto order = screens_.displayOrder();
    const auto index = indexOfScreen(order, *screen);
    if (order.size() < 2 || !index) {
        return std::nullopt;
    }
    const auto step = action == SnapAction::nextDisplay ? 1 : order.size() - 1;
    const auto& other = order[(*index + step) % order.size()];
    return placeInOtherArea(current, area, screens_.usableFrame(other));
}

std::optional<Screen> WindowEngine::screenToTile(const std::optional<Element>& focused) const {
    if (focused) {
        if (const auto frame = windows_.readFrame(*focused)) {
            return screens_.screenFor(*frame);
        }
    }
    if (const auto pointer = services_.eventMonitors.pointerLocation()) {
        if (auto screen = screens_.screenAtPoint(screens_.toAccessibilityPoint(*pointer))) {
            return screen;
        }
    }
    return screens_.mainScreen();
}

/// The windows on the screen, the master first and as many as the user wants tiled.
std::vector<VisibleWindow> WindowEngine::windowsToTile(
    const Screen& screen, const std::optional<Element>& focused) const {
    auto tiled = windows_.orderedVisibleWindows();
    std::erase_if(tiled, [&](const VisibleWindow& visible) {
        const auto own = screens_.screenFor(visible.frame);
        return !own || own->id != screen.id;
    });
    const auto master = std::find_if(tiled.begin(), tiled.end(), [&](const VisibleWindow& visible) {
        return focused && visible.window == *focused;
    });
    if (master != tiled.end()) {
        std::rotate(tiled.begin(), master, master + 1);
    }
    const auto most = static_cast<std::size_t>(effectiveMaxTiles(services_.defaults));
    tiled.resize(std::min(tiled.size(), most));
    return tiled;
}

void WindowEngine::tile() {
    const auto& defaults = services_.defaults;
    if (defaults.boolForKey(preference::paused) ||
        !defaults.boolForKey(preference::tilingEnabled)) {
        return;
    }
    const auto reads = beginReads();
    const auto focused = windows_.focusedWindow();
    const auto screen = screenToTile(focused);
    if (!screen) {
        return;
    }
    const auto tiled = windowsToTile(*screen, focused);
    if (tiled.empty()) {
        return;
    }
    const Rect area = screens_.usableFrame(*screen);
    const double masterShare = effectiveMasterShare(defaults);
    const double gap = effectiveGap(defaults);
    std::vector<WindowMove> moves;
    moves.reserve(tiled.size());
    for (const auto& [window, frame] : tiled) {
        const Rect unit = tileUnit(moves.size(), tiled.size(), masterShare);
        moves.push_back({window, frame, placeUnit(unit, area, gap)});
    }
    moveAll(moves);
}

void WindowEngine::moveAll(std::span<const WindowMove> moves) {
    const auto saves = memory_.deferSaves();
    std::vector<WindowPlacement> placements;
    placements.reserve(moves.size());
    for (const auto& [window, current, target] : moves) {
        if (!memory_.findMemory(window)) {
            memory_.rememberWindow(current, window);
        }
        placements.push_back({window, target});
    }
    windows_.setFrames(placements);
    for (const auto& [window, target] : placements) {
        const Rect result = windows_.readFrame(window).value_or(target);
        // A record that had to make room for a newer one stays dropped.
        if (memory_.isBound(window)) {
            memory_.updateMemory(result, window);
        }
    }
    clearLast();
}

}  // namespace tessellon
