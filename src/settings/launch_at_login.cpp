#include "settings/launch_at_login.h"

#include <utility>

namespace tessellon {

LaunchAtLogin::LaunchAtLogin(LoginItem& item)
    : item_(item),
      status_(item.status()),
      itemChanged_(item.changed().subscribe([this] { refresh(); })) {}

void LaunchAtLogin::choose(bool launches) {
    auto error = launches ? item_.registerItem() : item_.unregisterItem();
    status_ = item_.status();
    loginError_ = std::move(error);
    changed_.emit();
}

void LaunchAtLogin::refresh() {
    const auto status = item_.status();
    if (std::exchange(status_, status) != status) {
        loginError_.reset();
        changed_.emit();
    }
}

}  // namespace tessellon
