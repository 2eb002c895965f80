#include "platform/qt/screen_coordinates.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <limits>

namespace tessellon {
namespace {

/// In device pixels, y down.
Rect deviceRect(const QtScreenGeometry& screen) {
    const auto& g = screen.geometry;
    return {static_cast<double>(g.x()), static_cast<double>(g.y()), g.width() * screen.ratio,
            g.height() * screen.ratio};
}

/// In Qt's pixels.
Rect qtRect(const QtScreenGeometry& screen) {
    const auto& g = screen.geometry;
    return {static_cast<double>(g.x()), static_cast<double>(g.y()), static_cast<double>(g.width()),
            static_cast<double>(g.height())};
}

double squaredDistance(const Rect& area, Point p) {
    const double dx = p.x - std::clamp(p.x, area.minX(), area.maxX());
    const double dy = p.y - std::clamp(p.y, area.minY(), area.maxY());
    return dx * dx + dy * dy;
}

/// The screen that holds a point, or the nearest one; 1:1 at the origin without screens.
template <typename AreaOf>
QtScreenGeometry screenNear(Point point, std::span<const QtScreenGeometry> screens, AreaOf areaOf) {
    QtScreenGeometry best;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (const auto& screen : screens) {
        const Rect area = areaOf(screen);
        const double distance = area.contains(point) ? -1 : squaredDistance(area, point);
        if (distance < bestDistance) {
            best = screen;
            bestDistance = distance;
        }
    }
    return best;
}

double primaryHeight(std::span<const QtScreenGeometry> screens) {
    return screens.empty() ? 0 : deviceRect(screens.front()).height;
}

int rounded(double value) {
    constexpr double limit = 1e6;  // far outside of every X11 screen, well inside an int
    return static_cast<int>(std::lround(std::clamp(value, -limit, limit)));
}

}  // namespace

std::vector<QtScreenGeometry> qtScreens() {
    std::vector<QtScreenGeometry> screens;
    const auto* const primary = QGuiApplication::primaryScreen();
    const auto add = [&](const QScreen& screen) {
        screens.push_back({screen.geometry(), screen.devicePixelRatio()});
    };
    if (primary != nullptr) {
        add(*primary);
    }
    for (const auto* const screen : QGuiApplication::screens()) {
        if (screen != primary) {
            add(*screen);
        }
    }
    return screens;
}

QRect toQtGeometry(const Rect& frame, std::span<const QtScreenGeometry> screens) {
    const double top = primaryHeight(screens) - frame.maxY();
    const auto screen = screenNear({frame.midX(), top + frame.height / 2}, screens, deviceRect);
    const Rect area = deviceRect(screen);
    // Edges are rounded, not sizes, so that neighbours stay neighbours.
    const auto x = [&](double device) {
        return rounded(area.x + (device - area.x) / screen.ratio);
    };
    const auto y = [&](double device) {
        return rounded(area.y + (device - area.y) / screen.ratio);
    };
    const QPoint topLeft(x(frame.minX()), y(top));
    return {topLeft, QSize(x(frame.maxX()) - topLeft.x(), y(top + frame.height) - topLeft.y())};
}

Rect fromQtGeometry(const QRect& geometry, std::span<const QtScreenGeometry> screens) {
    const Rect qt{static_cast<double>(geometry.x()), static_cast<double>(geometry.y()),
                  static_cast<double>(geometry.width()), static_cast<double>(geometry.height())};
    const auto screen = screenNear({qt.midX(), qt.midY()}, screens, qtRect);
    const Rect area = deviceRect(screen);
    const double top = area.y + (qt.y - area.y) * screen.ratio;
    const double height = qt.height * screen.ratio;
    return {area.x + (qt.x - area.x) * screen.ratio, primaryHeight(screens) - top - height,
            qt.width * screen.ratio, height};
}

}  // namespace tessellon
