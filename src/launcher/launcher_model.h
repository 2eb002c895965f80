// What the open launcher shows: the search text, the actions it leaves over and which of them is
// selected.
#pragma once

#include "base/signal.h"
#include "engine/snap_action.h"
#include "platform/beep.h"

#include <functional>
#include <string>
#include <vector>

namespace tessellon {

class LauncherModel {
  public:
    /// `appName` is the front application's name.
    LauncherModel(std::string appName, Beep& beep);
    LauncherModel(const LauncherModel&) = delete;
    LauncherModel& operator=(const LauncherModel&) = delete;

    const std::string& appName() const { return appName_; }

    /// Performs an action.
    std::function<void(SnapAction)> run;

    const std::string& query() const { return query_; }
    /// Selects the first match as well.
    void setQuery(std::string query);

    /// Index of the selected tile in matches().
    int selection() const { return selection_; }
    void setSelection(int selection);

    /// The actions whose title contains the query, in order; all of them while it is empty.
    std::vector<SnapAction> matches() const;

    /// Moves the selection by a number of tiles; stops at both ends.
    void move(int step);

    /// Runs the selected action; beeps when there is none.
    void runSelected();

    /// Emitted when query or selection changed.
    const Signal<>& changed() const { return changed_; }

  private:
    std::string appName_;
    Beep& beep_;
    std::string query_;
    int selection_ = 0;
    Signal<> changed_;
};

}  // namespace tessellon
