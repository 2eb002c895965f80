// What the window of the updates shows: one check for newer versions, from its beginning to its
// result.
#pragma once

#include "base/signal.h"
#include "platform/updater.h"
#include "updates/update_feed.h"

#include <functional>
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

    /// Called when the user has closed the window; destroys it.
    std::function<void()> closed;

  private:
    Updater& updater_;
    Version program_;
    UpdateState state_;
    Signal<> changed_;
};

/// The window of the updates; it is gone when this is destroyed.
class UpdateWindow {
  public:
    virtual ~UpdateWindow() = default;

    /// The user waits for it: it comes to the front and takes the keyboard.
    virtual void bringToFront() = 0;

    /// Nobody asked for it: it appears, and the keyboard stays where it is.
    virtual void showQuietly() = 0;
};

/// Where the window comes from.
class UpdateViews {
  public:
    virtual ~UpdateViews() = default;

    /// A window, not shown yet, that shows the model; the model outlives it.
    virtual std::unique_ptr<UpdateWindow> makeWindow(UpdateModel& model) = 0;
};

}  // namespace tessellon
