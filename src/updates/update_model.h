// What the window of the updates shows: one check for newer versions, from its beginning to its
// result.
#pragma once

#include "base/signal.h"
#include "platform/updater.h"
#include "platform/window.h"
#include "updates/update_feed.h"

#include <memory>
#include <string>
#include <utility>
#include <variant>

namespace tessellon {

struct Checking {
    bool operator==(const Checking&) const = default;
};
struct UpToDate {
    bool operator==(const UpToDate&) const = default;
};
struct CheckFailed {
    /// What went wrong, in a sentence for the user.
    std::string problem;
    bool operator==(const CheckFailed&) const = default;
};
/// The program was built without the address of a feed.
struct NoFeed {
    bool operator==(const NoFeed&) const = default;
};
/// An Update is a version that is newer than the program.
using UpdateState = std::variant<Checking, UpToDate, Update, CheckFailed, NoFeed>;

class UpdateModel {
  public:
    /// The updater, whose choices the window shows too, must outlive the model.
    UpdateModel(Updater& updater, const Version& program) : updater_(updater), program_(program) {}

    const UpdateState& state() const { return state_; }
    void setState(UpdateState state) {
        state_ = std::move(state);
        changed_.emit();
    }

    /// The version that runs.
    const Version& program() const { return program_; }
    Updater& updater() { return updater_; }

    /// Emitted after the state has changed.
    const Signal<>& changed() const { return changed_; }

  private:
    Updater& updater_;
    Version program_;
    UpdateState state_;
    Signal<> changed_;
};

/// Where the window of the updates comes from.
class UpdateViews {
  public:
    virtual ~UpdateViews() = default;

    /// A window, not shown yet, that shows the model; the model outlives it.
    virtual std::unique_ptr<Window> makeWindow(UpdateModel& model) = 0;
};

}  // namespace tessellon
