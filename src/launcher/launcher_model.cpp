#include "launcher/launcher_model.h"

#include "base/text.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace tessellon {

LauncherModel::LauncherModel(std::string appName, Beep& beep)
    : appName_(std::move(appName)), beep_(beep) {}

void LauncherModel::setQuery(std::string query) {
    if (query == query_) {
        return;
    }
    query_ = std::move(query);
    selection_ = 0;
    changed_.emit();
}

void LauncherModel::setSelection(int selection) {
    if (std::exchange(selection_, selection) != selection) {
        changed_.emit();
    }
}

std::vector<SnapAction> LauncherModel::matches() const {
    const auto wanted = toLower(trimHorizontalWhitespace(query_));
    std::vector<SnapAction> result;
    std::copy_if(allSnapActions.begin(), allSnapActions.end(), std::back_inserter(result),
                 [&](SnapAction action) {
                     return toLower(title(action)).find(wanted) != std::string::npos;
                 });
    return result;
}

void LauncherModel::move(int step) {
    const auto count = static_cast<int>(matches().size());
    if (count > 0) {
        setSelection(std::clamp(selection_ + step, 0, count - 1));
    }
}

void LauncherModel::runSelected() {
    const auto shown = matches();
    if (selection_ < 0 || selection_ >= static_cast<int>(shown.size())) {
        beep_.beep();
        return;
    }
    // Running an action closes the launcher, which takes this model and its callback along.
    if (const auto callback = run) {
        callback(shown[static_cast<std::size_t>(selection_)]);
    }
}

}  // namespace tessellon
