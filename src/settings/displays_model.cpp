#include "settings/displays_model.h"

#include "app/preferences.h"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>

namespace tessellon {
namespace {

/// Whole, and within what a display may measure.
std::string lengthText(double length) {
    constexpr double longest = 999999;
    return std::to_string(std::lround(std::clamp(length, 0.0, longest)));
}

std::string sizeText(double width, double height) {
    return lengthText(width) + " × " + lengthText(height);
}

std::string sizeLine(const Screen& screen) {
    const Rect& frame = screen.frame;
    const Size& scale = screen.backingScale;
    return sizeText(frame.width * scale.width, frame.height * scale.height) + " · looks like " +
           sizeText(frame.width, frame.height);
}

}  // namespace

DisplaysModel::DisplaysModel(const Displays& displays, const Screens& screens,
                             UserDefaults& defaults)
    : defaults_(defaults),
      overrides_(displayPaddingOverrides(defaults)),
      stored_(defaults.changed().subscribe([this](std::string_view key) {
          if (key == preference::displayPadding) {
              reload();
          }
      })) {
    const auto all = displays.screens();
    for (const auto& screen : screens.displayOrder()) {
        displays_.push_back({.key = displayIdentifier(screen),
                             .name = screen.localizedName,
                             .isMain = !all.empty() && all.front().id == screen.id,
                             .sizeLine = sizeLine(screen)});
    }
}

double DisplaysModel::ownGap(const std::string& key) const {
    const auto found = overrides_.find(key);
    return found != overrides_.end() ? found->second : 0;
}

void DisplaysModel::addOwnGap(const std::string& key) {
    setOwnGap(key, effectivePadding(defaults_));
}

void DisplaysModel::removeOwnGap(const std::string& key) {
    overrides_.erase(key);
    store();
}

void DisplaysModel::setOwnGap(const std::string& key, double gap) {
    overrides_[key] = gap;
    store();
}

void DisplaysModel::store() {
    setDisplayPaddingOverrides(defaults_, overrides_);
    changed_.emit();
}

void DisplaysModel::reload() {
    auto overrides = displayPaddingOverrides(defaults_);
    if (overrides != overrides_) {
        overrides_ = std::move(overrides);
        changed_.emit();
    }
}

}  // namespace tessellon
