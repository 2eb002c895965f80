// The choice whether the program starts when the user logs in, as the settings and the welcome tour
// show it.
#pragma once

#include "base/signal.h"
#include "platform/login_item.h"

#include <optional>
#include <string>

namespace tessellon {

class LaunchAtLogin {
  public:
    /// Takes the state from the login item, which must outlive it.
    explicit LaunchAtLogin(LoginItem& item);

    /// Whether the program is registered, approved or not: what a switch shows.
    bool launchAtLogin() const { return launchAtLogin_; }
    /// Registered, but the user has to approve it where the desktop lists such programs.
    bool loginNeedsApproval() const { return loginNeedsApproval_; }
    /// What went wrong at the last change, in words for the user; nothing when it worked.
    const std::optional<std::string>& loginError() const { return loginError_; }

    /// Registers the program or takes it off, once, and then shows what really became of it.
    void choose(bool launches);

    /// Emitted at the end of choose(), also when nothing has changed: a switch has to go back then.
    const Signal<>& changed() const { return changed_; }

  private:
    void readStatus();

    LoginItem& item_;
    bool launchAtLogin_ = false;
    bool loginNeedsApproval_ = false;
    std::optional<std::string> loginError_;
    Signal<> changed_;
};

}  // namespace tessellon
