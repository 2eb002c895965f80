#include "menu/menu_model.h"

#include "app/preferences.h"

#include <string_view>
#include <utility>

namespace tessellon {

MenuModel::MenuModel(const std::optional<RunningApplication>& application, Snapping snapping,
                     std::optional<LastSnap> last, UserDefaults& defaults,
                     const ArrangementStore& arrangements)
    : defaults_(defaults),
      canSnap_(snapping == Snapping::available),
      last_(std::move(last)),
      arrangements_(arrangements.load()) {
    if (application) {
        appName_ = application->localizedName;
        bundleID_ = application->bundleIdentifier;
    }
    ignored_ = bundleID_ && isIgnored(defaults_, *bundleID_);
    settingChanged_ = defaults.changed().subscribe([this](std::string_view key) {
        if (key == preference::ignored) {
            readIgnored();
        }
    });
}

void MenuModel::toggleIgnored() {
    if (!bundleID_) {
        return;
    }
    tessellon::toggleIgnored(defaults_, *bundleID_);
    readIgnored();
}

void MenuModel::readIgnored() {
    const bool ignored = bundleID_ && isIgnored(defaults_, *bundleID_);
    if (ignored != ignored_) {
        ignored_ = ignored;
        changed_.emit();
    }
}

}  // namespace tessellon
