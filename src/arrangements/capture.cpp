#include "arrangements/capture.h"

#include "engine/placement.h"

#include <utility>

namespace tessellon {
namespace {

std::optional<Arrangement::Placement> placementOf(const WindowEngine& engine,
                                                  const WindowAccess& windows,
                                                  std::span<const Screen> displays,
                                                  const VisibleWindow& visible) {
    auto bundleID = windows.bundleIdentifier(visible.window);
    const auto display = engine.screens().screenFor(visible.frame);
    const auto index = display ? indexOfScreen(displays, *display) : std::nullopt;
    if (!bundleID || !index) {
        return std::nullopt;
    }
    const auto usable = engine.screens().usableFrame(*display);
    if (usable.isEmpty()) {
        return std::nullopt;
    }
    const auto& frame = visible.frame;
    const Rect unit{(frame.x - usable.x) / usable.width, (frame.y - usable.y) / usable.height,
                    frame.width / usable.width, frame.height / usable.height};
    return Arrangement::Placement{*std::move(bundleID), windows.title(visible.window),
                                  static_cast<std::int64_t>(*index), clampedUnit(unit)};
}

}  // namespace

std::optional<Arrangement> captureArrangement(WindowEngine& engine, std::string name) {
    const auto reads = engine.beginReads();
    const auto displays = engine.screens().displayOrder();
    Arrangement arrangement{Uuid::random(), std::move(name), {}, std::nullopt};
    for (const auto& visible : engine.windows().orderedVisibleWindows()) {
        if (auto placement = placementOf(engine, engine.windows(), displays, visible)) {
            arrangement.placements.push_back(*std::move(placement));
        }
    }
    if (arrangement.placements.empty()) {
        return std::nullopt;
    }
    return arrangement;
}

}  // namespace tessellon
