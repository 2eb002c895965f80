#include "engine/screens.h"

#include "app/preferences.h"

#include <algorithm>
#include <utility>

namespace tessellon {
namespace {

double primaryHeight(std::span<const Screen> screens) {
    return screens.empty() ? 0 : screens.front().frame.height;
}

Rect flipped(const Rect& rect, double height) {
    return {rect.minX(), height - rect.maxY(), rect.width, rect.height};
}

}  // namespace

std::string displayIdentifier(const Screen& screen) {
    return screen.uuid.value_or(screen.localizedName);
}

std::optional<std::size_t> indexOfScreen(std::span<const Screen> screens, const Screen& screen) {
    for (std::size_t i = 0; i < screens.size(); ++i) {
        if (screens[i].id == screen.id) {
            return i;
        }
    }
    return std::nullopt;
}

Screens::Screens(const Displays& displays, const UserDefaults& defaults)
    : displays_(displays), defaults_(defaults) {}

Token Screens::beginReads() const {
    ++operations_;
    return Token([this] {
        if (--operations_ == 0) {
            look_.reset();
        }
    });
}

std::vector<Screen> Screens::current() const {
    if (operations_ == 0) {
        return displays_.screens();
    }
    if (!look_) {
        look_ = displays_.screens();
    }
    return *look_;
}

Rect Screens::toAccessibilityRect(const Rect& rect) const {
    return flipped(rect, primaryHeight(current()));
}

Point Screens::toAccessibilityPoint(Point point) const {
    return {point.x, primaryHeight(current()) - point.y};
}

std::optional<Screen> Screens::screenFor(const Rect& rect) const {
    auto screens = current();
    const double height = primaryHeight(screens);
    std::size_t best = 0;
    double bestArea = 0;
    for (std::size_t i = 0; i < screens.size(); ++i) {
        const auto common = rect.intersection(flipped(screens[i].frame, height));
        if (common && common->area() > bestArea) {
            best = i;
            bestArea = common->area();
        }
    }
    if (bestArea > 0) {
        return std::move(screens[best]);
    }
    return mainScreen();
}

std::optional<Screen> Screens::screenAtPoint(Point point) const {
    auto screens = current();
    const double height = primaryHeight(screens);
    const auto found = std::find_if(screens.begin(), screens.end(), [&](const Screen& screen) {
        return flipped(screen.frame, height).contains(point);
    });
    if (found == screens.end()) {
        return std::nullopt;
    }
    return std::move(*found);
}

std::optional<Screen> Screens::mainScreen() const {
    if (auto main = displays_.mainScreen()) {
        return main;
    }
    auto screens = current();
    if (screens.empty()) {
        return std::nullopt;
    }
    return std::move(screens.front());
}

Rect Screens::usableFrame(const Screen& screen) const {
    const auto overrides = displayPaddingOverrides(defaults_);
    const auto own = overrides.find(displayIdentifier(screen));
    const double padding = own != overrides.end() ? own->second : effectivePadding(defaults_);
    const Rect visible = toAccessibilityRect(screen.visibleFrame);
    if (2 * padding < visible.width && 2 * padding < visible.height) {
        return visible.inset(padding);
    }
    return visible;
}

std::vector<Screen> Screens::displayOrder() const {
    auto screens = current();
    std::stable_sort(screens.begin(), screens.end(), [](const Screen& a, const Screen& b) {
        if (a.frame.minX() != b.frame.minX()) {
            return a.frame.minX() < b.frame.minX();
        }
        return a.frame.maxY() > b.frame.maxY();
    });
    return screens;
}

}  // namespace tessellon
