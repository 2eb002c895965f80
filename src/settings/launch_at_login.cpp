#include "settings/launch_at_login.h"

namespace tessellon {

LaunchAtLogin::LaunchAtLogin(LoginItem& item) : item_(item) {
    readStatus();
}

void LaunchAtLogin::choose(bool launches) {
    loginError_ = launches ? item_.registerItem() : item_.unregisterItem();
    readStatus();
    changed_.emit();
}

void LaunchAtLogin::readStatus() {
    const auto status = item_.status();
    launchAtLogin_ = status != LoginItemStatus::notRegistered;
    loginNeedsApproval_ = status == LoginItemStatus::requiresApproval;
}

}  // namespace tessellon
