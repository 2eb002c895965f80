// What the user sees of the displays in the settings: their order, their sizes and their own edge
// gaps.
#pragma once

#include "base/signal.h"
#include "base/token.h"
#include "engine/screens.h"
#include "platform/displays.h"
#include "platform/user_defaults.h"

#include <map>
#include <string>
#include <vector>

namespace tessellon {

/// One display in the list.
struct DisplayEntry {
    /// The name under which its own gap is stored; displays that tell nothing about themselves
    /// share it with those of the same name.
    std::string key;
    std::string name;
    /// Whether it is the primary display.
    bool isMain = false;
    /// Its size in pixels and in points, for the user.
    std::string sizeLine;
};

class DisplaysModel {
  public:
    /// Takes the displays as they are now, in the order in which windows move from one to the next.
    /// The settings must outlive the model.
    DisplaysModel(const Displays& displays, const Screens& screens, UserDefaults& defaults);

    const std::vector<DisplayEntry>& displays() const { return displays_; }

    bool hasOwnGap(const std::string& key) const { return overrides_.contains(key); }
    /// In points; 0 for a display that has none.
    double ownGap(const std::string& key) const;

    /// Gives the display a gap of its own, to begin with the one that all others have.
    void addOwnGap(const std::string& key);
    /// Lets the display have the same gap as all others again.
    void removeOwnGap(const std::string& key);
    void setOwnGap(const std::string& key, double gap);

    /// Emitted after the own gaps have changed, by whomever.
    const Signal<>& changed() const { return changed_; }

  private:
    void store();
    void reload();

    UserDefaults& defaults_;
    std::vector<DisplayEntry> displays_;
    std::map<std::string, double> overrides_;
    Signal<> changed_;
    Token stored_;
};

}  // namespace tessellon
