// The port through which the program is started when the user logs in.
#pragma once

#include "base/signal.h"

#include <optional>
#include <string>

namespace tessellon {

enum class LoginItemStatus {
    enabled,
    notRegistered,
    /// Registered, but the user or the desktop has switched it off; only they can switch it on.
    requiresApproval,
};

class LoginItem {
  public:
    virtual ~LoginItem() = default;

    /// As it is now, whoever changed it.
    virtual LoginItemStatus status() const = 0;

    /// Has the program started at login from now on, or no more. Nothing on success, else what went
    /// wrong, in words for the user.
    virtual std::optional<std::string> registerItem() = 0;
    virtual std::optional<std::string> unregisterItem() = 0;

    /// Shows the user where the desktop lists the programs that start at login. False when this
    /// desktop has nothing that could be opened.
    virtual bool openSystemSettings() = 0;

    /// Emitted after this program has registered itself or taken itself off. Nobody tells of what
    /// the user or the desktop changes.
    const Signal<>& changed() const { return changed_; }

  protected:
    LoginItem() = default;
    Signal<> changed_;
};

}  // namespace tessellon
