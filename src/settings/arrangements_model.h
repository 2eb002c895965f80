// What the Arrangements page shows, and what its controls set off.
#pragma once

#include "arrangements/arrangement.h"
#include "base/signal.h"
#include "base/token.h"
#include "base/uuid.h"
#include "settings/settings_services.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

class ArrangementsModel {
  public:
    /// Follows the stored list from now on. What `services` names must outlive the model.
    explicit ArrangementsModel(const SettingsServices& services);
    ArrangementsModel(const ArrangementsModel&) = delete;
    ArrangementsModel& operator=(const ArrangementsModel&) = delete;

    /// The saved arrangements as they are stored.
    const std::vector<Arrangement>& list() const { return list_; }
    /// What became of the last save, in words for the user; nothing before the first.
    const std::optional<std::string>& message() const { return message_; }

    /// How many there are, such as "3 arrangements".
    std::string count() const;
    /// How many windows it has, and of which applications: the first four by name.
    std::string summary(const Arrangement& arrangement) const;
    /// What to call the one at `index` of the list so that it is not taken for another: by its
    /// number too when it has no name, or the same as another one.
    std::string spokenName(std::size_t index) const;

    /// Saves where the windows are now as another arrangement.
    void save();

    // What is done to an arrangement that is not stored any more comes to nothing.
    void rename(const Uuid& id, std::string_view name);
    void apply(const Uuid& id);
    /// Also ends a recording of keys, whatever they are for, and has the hot keys registered anew.
    void remove(const Uuid& id);

    /// Emitted after the list or the message has changed.
    const Signal<>& changed() const { return changed_; }

  private:
    void reload();
    std::string applicationName(const std::string& identifier) const;

    SettingsServices services_;
    std::vector<Arrangement> list_;
    std::optional<std::string> message_;
    Signal<> changed_;
    Token saved_;
    Token settingChanged_;
};

}  // namespace tessellon
