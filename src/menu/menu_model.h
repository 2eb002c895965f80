// What the panel of the status item shows, and what its controls set off. A model lives as long as
// one opening of the panel: all but ignored() is a picture of the moment at which the panel opened.
#pragma once

#include "arrangements/arrangement.h"
#include "arrangements/arrangement_store.h"
#include "base/signal.h"
#include "base/token.h"
#include "engine/snap_action.h"
#include "engine/window_engine.h"
#include "platform/applications.h"
#include "platform/user_defaults.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessellon {

/// Whether there is a window that the tiles could snap.
enum class Snapping { available, unavailable };

class MenuModel {
  public:
    /// `application` is the one in front, unless that is this program. The settings and the store
    /// must outlive the model; the store is read only now.
    MenuModel(const std::optional<RunningApplication>& application, Snapping snapping,
              std::optional<LastSnap> last, UserDefaults& defaults,
              const ArrangementStore& arrangements);
    MenuModel(const MenuModel&) = delete;
    MenuModel& operator=(const MenuModel&) = delete;

    /// The application's name in the user's language; nothing when there is none in front.
    const std::optional<std::string>& appName() const { return appName_; }
    const std::optional<std::string>& bundleID() const { return bundleID_; }
    bool canSnap() const { return canSnap_; }
    const std::optional<LastSnap>& last() const { return last_; }
    /// Whether the application's windows never snap; false when it has no identifier.
    bool ignored() const { return ignored_; }
    const std::vector<Arrangement>& arrangements() const { return arrangements_; }

    /// Adds the application to the list of those that are ignored, or takes it off. Nothing when
    /// there is none that could be told apart.
    void toggleIgnored();

    /// Emitted when ignored() has changed, by whomever.
    const Signal<>& changed() const { return changed_; }

    // What the controls do. Each of them may destroy the model.
    std::function<void(SnapAction)> snap;
    std::function<void()> settings;
    std::function<void()> checkUpdates;
    std::function<void(const Arrangement&)> apply;
    std::function<void()> save;
    std::function<void()> tile;
    std::function<void()> quit;

  private:
    void readIgnored();

    UserDefaults& defaults_;
    std::optional<std::string> appName_;
    std::optional<std::string> bundleID_;
    bool canSnap_;
    std::optional<LastSnap> last_;
    bool ignored_ = false;
    std::vector<Arrangement> arrangements_;
    Signal<> changed_;
    Token settingChanged_;
};

}  // namespace tessellon
