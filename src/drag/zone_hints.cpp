#include "drag/zone_hints.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace tessellon {
namespace {

// A screen is cut into five columns and three rows; the corners span two columns, so that the outer
// thirds are thin strips in the middle of the left and the right edge.
constexpr std::array<double, 6> columnEdges{0, 0.08, 0.3, 0.7, 0.92, 1};
constexpr std::array<double, 4> rowEdges{0, 0.22, 0.78, 1};

struct Zone {
    SnapAction action;
    std::size_t firstColumn;
    std::size_t lastColumn;
    std::size_t row;
};

constexpr std::array<Zone, 11> zones{{
    {SnapAction::topLeft, 0, 1, 0},
    {SnapAction::topHalf, 2, 2, 0},
    {SnapAction::topRight, 3, 4, 0},
    {SnapAction::leftThird, 0, 0, 1},
    {SnapAction::leftHalf, 1, 1, 1},
    {SnapAction::center, 2, 2, 1},
    {SnapAction::rightHalf, 3, 3, 1},
    {SnapAction::rightThird, 4, 4, 1},
    {SnapAction::bottomLeft, 0, 1, 2},
    {SnapAction::bottomHalf, 2, 2, 2},
    {SnapAction::bottomRight, 3, 4, 2},
}};

/// What is drawn of a zone keeps this distance from its edges, in points.
constexpr double zoneInset = 4;

/// The cell that a fraction falls into; the outer cells reach on beyond the screen.
template <std::size_t count>
std::size_t cellAt(const std::array<double, count>& edges, double fraction) {
    std::size_t cell = 0;
    while (cell + 2 < count && fraction >= edges[cell + 1]) {
        ++cell;
    }
    return cell;
}

}  // namespace

ZoneHints::ZoneHints(const Displays& displays, DragViews& views)
    : displays_(displays), views_(views) {}

std::vector<Hint> ZoneHints::layout(const Screen& screen) {
    const double width = screen.visibleFrame.width;
    const double height = screen.visibleFrame.height;
    std::vector<Hint> hints;
    hints.reserve(zones.size());
    for (const auto& zone : zones) {
        const double left = columnEdges[zone.firstColumn] * width;
        const double right = columnEdges[zone.lastColumn + 1] * width;
        const double top = rowEdges[zone.row] * height;
        const double bottom = rowEdges[zone.row + 1] * height;
        const Rect rect = Rect{left, top, right - left, bottom - top}.inset(zoneInset);
        if (!rect.isEmpty()) {
            hints.push_back({static_cast<int>(hints.size()), rect, zone.action});
        }
    }
    return hints;
}

std::optional<SnapAction> ZoneHints::zoneAt(const Screen& screen, Point point) {
    const Rect& visible = screen.visibleFrame;
    if (visible.isEmpty()) {
        return std::nullopt;
    }
    const auto column = cellAt(columnEdges, (point.x - visible.minX()) / visible.width);
    const auto row = cellAt(rowEdges, (visible.maxY() - point.y) / visible.height);
    for (const auto& zone : zones) {
        if (zone.row == row && zone.firstColumn <= column && column <= zone.lastColumn) {
            return zone.action;
        }
    }
    return std::nullopt;
}

void ZoneHints::show() {
    auto screens = displays_.screens();
    const bool unchanged =
        std::equal(panels_.begin(), panels_.end(), screens.begin(), screens.end(),
                   [](const ScreenPanel& shown, const Screen& screen) {
                       return shown.screen.frame == screen.frame;
                   });
    if (!unchanged) {
        teardown();
    }
    if (panels_.empty()) {
        for (const auto& screen : screens) {
            panels_.push_back({screen, views_.makeHintsPanel()});
        }
    }
    for (std::size_t i = 0; i < screens.size(); ++i) {
        auto& [screen, panel] = panels_[i];
        screen = std::move(screens[i]);
        if (panel->frame() != screen.visibleFrame) {
            panel->setFrame(screen.visibleFrame);
        }
        panel->setHints(layout(screen));
        panel->orderFrontRegardless();
    }
}

void ZoneHints::hide() {
    for (const auto& [screen, panel] : panels_) {
        if (panel->isVisible()) {
            panel->orderOut();
        }
    }
}

void ZoneHints::teardown() {
    hide();
    panels_.clear();
}

void ZoneHints::setActive(SnapAction action, const Screen& screen) {
    for (const auto& [own, panel] : panels_) {
        if (panel->isVisible()) {
            panel->setActive(own.id == screen.id ? std::optional(action) : std::nullopt);
        }
    }
}

void ZoneHints::clearActive() {
    for (const auto& [screen, panel] : panels_) {
        if (panel->isVisible()) {
            panel->setActive(std::nullopt);
        }
    }
}

}  // namespace tessellon
