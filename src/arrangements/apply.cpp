#include "arrangements/apply.h"

#include "app/preferences.h"
#include "base/text.h"
#include "engine/placement.h"

#include <algorithm>
#include <map>

namespace tessellon {
namespace {

struct PooledWindow {
    Element window;
    /// In normalisation form C, since one program may spell its title either way.
    std::string title;
};

/// The windows that are left for placements, by the bundle identifier of their application.
using Pool = std::map<std::string, std::vector<PooledWindow>, std::less<>>;

Pool collectWindows(WindowEngine& engine, const Arrangement& arrangement) {
    Pool pool;
    for (const auto& placement : arrangement.placements) {
        pool.try_emplace(placement.bundleID);
    }
    for (const auto& application : engine.services().applications.running()) {
        if (application.policy != ActivationPolicy::regular || application.hidden ||
            !application.bundleIdentifier) {
            continue;
        }
        const auto list = pool.find(*application.bundleIdentifier);
        if (list == pool.end()) {
            continue;
        }
        for (const auto& window : engine.windows().windowsOfApp(application.pid)) {
            list->second.push_back({window, toNfc(engine.windows().title(window))});
        }
    }
    return pool;
}

/// Takes the window for a placement out of the pool: the first with its title, else the first of
/// its application.
std::optional<Element> takeWindow(Pool& pool, const Arrangement::Placement& placement) {
    auto& list = pool.find(placement.bundleID)->second;
    if (list.empty()) {
        return std::nullopt;
    }
    auto chosen = list.begin();
    if (!placement.title.empty()) {
        const auto titled =
            std::find_if(list.begin(), list.end(),
                         [title = toNfc(placement.title)](const PooledWindow& candidate) {
                             return candidate.title == title;
                         });
        chosen = titled != list.end() ? titled : chosen;
    }
    const auto window = chosen->window;
    list.erase(chosen);
    return window;
}

Rect targetOf(const WindowEngine& engine, std::span<const Screen> displays,
              const Arrangement::Placement& placement) {
    const auto lastDisplay = static_cast<std::int64_t>(displays.size()) - 1;
    const auto index = std::clamp<std::int64_t>(placement.screen, 0, lastDisplay);
    const auto usable = engine.screens().usableFrame(displays[static_cast<std::size_t>(index)]);
    const auto unit = clampedUnit(placement.unit);
    return Rect{usable.x + unit.x * usable.width, usable.y + unit.y * usable.height,
                unit.width * usable.width, unit.height * usable.height}
        .integral();
}

}  // namespace

void applyArrangement(WindowEngine& engine, const Arrangement& arrangement) {
    if (engine.services().defaults.boolForKey(preference::paused)) {
        return;
    }
    const auto reads = engine.beginReads();
    const auto displays = engine.screens().displayOrder();
    if (displays.empty()) {
        return;
    }
    auto pool = collectWindows(engine, arrangement);
    std::vector<WindowMove> moves;
    for (const auto& placement : arrangement.placements) {
        const auto window = takeWindow(pool, placement);
        if (const auto current = window ? engine.windows().readFrame(*window) : std::nullopt) {
            moves.push_back({*window, *current, targetOf(engine, displays, placement)});
        }
    }
    engine.moveAll(moves);
}

}  // namespace tessellon
