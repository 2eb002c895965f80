// A login item that needs no desktop; it can be switched off and can refuse, as a real one would.
#pragma once

#include "platform/login_item.h"

#include <optional>
#include <string>
#include <utility>

namespace tessellon {

class MemoryLoginItem final : public LoginItem {
  public:
    LoginItemStatus status() const override { return status_; }
    std::optional<std::string> registerItem() override {
        ++registrations_;
        return set(LoginItemStatus::enabled);
    }
    std::optional<std::string> unregisterItem() override {
        ++removals_;
        return set(LoginItemStatus::notRegistered);
    }

    bool openSystemSettings() override {
        ++openings_;
        return true;
    }

    /// The state as the user or the desktop changes it.
    void setStatus(LoginItemStatus status) { status_ = status; }
    /// What registering leads to when it succeeds; enabled unless told otherwise.
    void setRequiresApproval(bool requires_) { requiresApproval_ = requires_; }
    /// Refuses every change with these words from now on; with nothing, obeys again.
    void setProblem(std::optional<std::string> problem) { problem_ = std::move(problem); }

    int registrations() const { return registrations_; }
    int removals() const { return removals_; }
    int openings() const { return openings_; }

  private:
    std::optional<std::string> set(LoginItemStatus status) {
        if (!problem_) {
            const bool waits = status == LoginItemStatus::enabled && requiresApproval_;
            status_ = waits ? LoginItemStatus::requiresApproval : status;
            changed_.emit();
        }
        return problem_;
    }

    LoginItemStatus status_ = LoginItemStatus::notRegistered;
    bool requiresApproval_ = false;
    std::optional<std::string> problem_;
    int registrations_ = 0;
    int removals_ = 0;
    int openings_ = 0;
};

}  // namespace tessellon
