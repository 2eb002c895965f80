#include "engine/placement.h"

#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

// An edge counts as lying on the border when it is this close to it, as a fraction of the area: a
// sum of thirds may miss 1 by a rounding error.
constexpr double borderTolerance = 0.001;

// What placeWithMargin leaves at least, in points.
constexpr Size smallestWithMargin{200, 150};

constexpr double smallestUnit = 0.05;

/// Share of the free room that lies before a window, 0…1.
double leadingShare(double offset, double room) {
    if (!(room > 0)) {
        return 0;
    }
    const double share = offset / room;
    return std::isnan(share) ? 0 : std::clamp(share, 0.0, 1.0);
}

double clampedFraction(double value) {
    return std::isfinite(value) ? std::clamp(value, 0.0, 1.0) : 0;
}

double clampedExtent(double value, double offset) {
    return std::max(std::min(clampedFraction(value), 1 - offset), smallestUnit);
}

}  // namespace

Rect placeUnit(const Rect& unit, const Rect& area, double gap) {
    double x = area.minX() + unit.x * area.width;
    double y = area.minY() + unit.y * area.height;
    double width = unit.width * area.width;
    double height = unit.height * area.height;
    const double half = gap * 0.5;
    if (unit.minX() > borderTolerance) {
        x += half;
        width -= half;
    }
    if (unit.maxX() < 1 - borderTolerance) {
        width -= half;
    }
    if (unit.minY() > borderTolerance) {
        y += half;
        height -= half;
    }
    if (unit.maxY() < 1 - borderTolerance) {
        height -= half;
    }
    return Rect{x, y, std::max(width, 0.0), std::max(height, 0.0)}.integral();
}

Rect placeWithMargin(const Rect& area, double margin) {
    const bool fits = 2 * margin + smallestWithMargin.width < area.width &&
                      2 * margin + smallestWithMargin.height < area.height;
    return (fits ? area.inset(margin) : area).integral();
}

Rect placeCentered(const Rect& current, const Rect& area) {
    const double width = std::min(current.width, area.width);
    const double height = std::min(current.height, area.height);
    return Rect{area.midX() - width * 0.5, area.midY() - height * 0.5, width, height}.integral();
}

Rect placeInOtherArea(const Rect& current, const Rect& from, const Rect& to) {
    const double width = std::min(current.width, to.width);
    const double height = std::min(current.height, to.height);
    const double left = leadingShare(current.minX() - from.minX(), from.width - current.width);
    const double above = leadingShare(current.minY() - from.minY(), from.height - current.height);
    return Rect{to.minX() + left * (to.width - width), to.minY() + above * (to.height - height),
                width, height}
        .integral();
}

Rect clampedUnit(const Rect& unit) {
    const double x = clampedFraction(unit.x);
    const double y = clampedFraction(unit.y);
    return {x, y, clampedExtent(unit.width, x), clampedExtent(unit.height, y)};
}

}  // namespace tessellon
