#include "menu/menu_model.h"

#include "app/preferences.h"

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
}

void MenuModel::toggleIgnored() {
    if (!bundleID_) {
        return;
    }
    tessellon::toggleIgnored(defaults_, *bundleID_);
    ignored_ = isIgnored(defaults_, *bundleID_);
    changed_.emit();
}

}  // namespace tessellon
