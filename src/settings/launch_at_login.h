// The choice whether the program starts when the user logs in, as the settings show it.
#pragma once

#include "base/signal.h"
#include "base/token.h"
#include "platform/login_item.h"

#include <optional>
#include <string>

namespace tessellon {

class LaunchAtLogin {
  public:
    /// Takes the state from the login item, which must outlive it, and follows it.
    explicit LaunchAtLogin(LoginItem& item);
    LaunchAtLogin(const LaunchAtLogin&) = delete;
    LaunchAtLogin& operator=(const LaunchAtLogin&) = delete;

    /// Whether the program is registered, approved or not: what a switch shows.
    bool launchAtLogin() const { return status_ != LoginItemStatus::notRegistered; }
    /// Registered, but the user has to approve it where the desktop lists such programs.
    bool loginNeedsApproval() const { return status_ == LoginItemStatus::requiresApproval; }
    /// What went wrong at the last change, in words for the user; nothing when it worked.
    const std::optional<std::string>& loginError() const { return loginError_; }

    /// Registers the program or takes it off, once, and then shows what really became of it.
    void choose(bool launches);

    /// Looks whether the user or the desktop has changed the state.
    void refresh();

    /// Emitted after the state has changed and at the end of choose(), also when that came to
    /// nothing: a switch has to go back then.
    const Signal<>& changed() const { return changed_; }

  private:
    LoginItem& item_;
    LoginItemStatus status_;
    std::optional<std::string> loginError_;
    Signal<> changed_;
    Token itemChanged_;
};

}  // namespace tessellon
