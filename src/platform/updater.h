// The port through which the user learns of newer versions. Nothing is ever downloaded or
// installed; at most a page is opened.
#pragma once

#include "base/signal.h"

namespace tessellon {

class Updater {
  public:
    virtual ~Updater() = default;

    /// Begins the automatic checks, if the user wants them. Called once, at launch; returns at
    /// once.
    virtual void start() = 0;

    /// Checks now and shows the result, whatever it is. Returns at once; while a check is under way
    /// that one is shown.
    virtual void checkForUpdates() = 0;

    /// Whether the program checks by itself, at most once a day. Remembered; off until the user
    /// has chosen it.
    virtual bool automaticallyChecksForUpdates() const = 0;
    virtual void setAutomaticallyChecksForUpdates(bool checks) = 0;

    /// Emitted after the choice has changed.
    const Signal<>& changed() const { return changed_; }

  protected:
    Updater() = default;
    Signal<> changed_;
};

}  // namespace tessellon
