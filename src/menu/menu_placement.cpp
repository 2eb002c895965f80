#include "menu/menu_placement.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tessellon {
namespace {

/// Between the item and the panel.
constexpr double distanceToItem = 6;
/// Between the panel and the edges of the visible area.
constexpr double margin = 8;

double squaredDistance(const Rect& rect, Point point) {
    const double dx = std::max({rect.minX() - point.x, point.x - rect.maxX(), 0.0});
    const double dy = std::max({rect.minY() - point.y, point.y - rect.maxY(), 0.0});
    return dx * dx + dy * dy;
}

/// The item of a dock that has slid away lies on no screen.
std::optional<Screen> nearestScreen(const Displays& displays, Point point) {
    std::optional<Screen> nearest;
    double shortest = std::numeric_limits<double>::infinity();
    for (auto& screen : displays.screens()) {
        const double distance = squaredDistance(screen.frame, point);
        if (distance < shortest) {
            shortest = distance;
            nearest = std::move(screen);
        }
    }
    return nearest;
}

Rect visibleAround(const Displays& displays, const Screens& screens, const Rect& place) {
    const Point middle{place.midX(), place.midY()};
    auto screen = screens.screenAtPoint(screens.toAccessibilityPoint(middle));
    if (!screen) {
        screen = nearestScreen(displays, middle);
    }
    return screen ? screen->visibleFrame : Rect{};
}

double leftEdge(const MenuAnchor& anchor, double width) {
    const double centered = anchor.place.midX() - width * 0.5;
    return std::min(std::max(centered, anchor.visible.minX() + margin),
                    anchor.visible.maxX() - width - margin);
}

double bottomEdge(const MenuAnchor& anchor, double height) {
    const auto& [place, visible] = anchor;
    const double below = place.minY() - height - distanceToItem;
    const double above = place.maxY() + distanceToItem;
    const bool fitsBelow = below >= visible.minY() + margin;
    const bool moreRoomAbove = visible.maxY() - place.maxY() > place.minY() - visible.minY();
    // The item itself may lie in a dock, outside of the visible area.
    return std::min(std::max(!fitsBelow && moreRoomAbove ? above : below, visible.minY()),
                    visible.maxY() - height);
}

}  // namespace

MenuAnchor menuAnchor(const Displays& displays, const Screens& screens,
                      const std::optional<Rect>& item, const std::optional<Point>& pointer) {
    if (item) {
        return {*item, visibleAround(displays, screens, *item)};
    }
    if (pointer) {
        const Rect place{pointer->x, pointer->y, 0, 0};
        return {place, visibleAround(displays, screens, place)};
    }
    const auto main = screens.mainScreen();
    const auto visible = main ? main->visibleFrame : Rect{};
    return {{visible.maxX(), visible.maxY(), 0, 0}, visible};
}

Rect menuPanelFrame(const MenuAnchor& anchor, Size panel) {
    return {leftEdge(anchor, panel.width), bottomEdge(anchor, panel.height), panel.width,
            panel.height};
}

}  // namespace tessellon
