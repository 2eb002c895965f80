#include "base/geometry.h"

#include <algorithm>
#include <cmath>

namespace tessellon {

std::optional<Rect> Rect::intersection(const Rect& other) const {
    const double left = std::max(minX(), other.minX());
    const double top = std::max(minY(), other.minY());
    const Rect common{left, top, std::min(maxX(), other.maxX()) - left,
                      std::min(maxY(), other.maxY()) - top};
    if (common.isEmpty()) {
        return std::nullopt;
    }
    return common;
}

Rect Rect::integral() const {
    const double left = std::floor(minX());
    const double top = std::floor(minY());
    return {left, top, std::ceil(maxX()) - left, std::ceil(maxY()) - top};
}

bool nearlyEqual(const Rect& a, const Rect& b, double tolerance) {
    return std::abs(a.x - b.x) < tolerance && std::abs(a.y - b.y) < tolerance &&
           std::abs(a.width - b.width) < tolerance && std::abs(a.height - b.height) < tolerance;
}

bool isFinite(const Rect& r) {
    return std::isfinite(r.x) && std::isfinite(r.y) && std::isfinite(r.width) &&
           std::isfinite(r.height);
}

}  // namespace tessellon
