// The user's saved arrangements. Whoever changes the list loads it, changes it and saves it whole,
// and the last save counts.
#pragma once

#include "arrangements/arrangement.h"
#include "base/notification_center.h"
#include "platform/user_defaults.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

class ArrangementStore {
  public:
    /// Both must outlive the store.
    ArrangementStore(UserDefaults& defaults, NotificationCenter& notifications);

    /// The list; empty when there is none or any part of it cannot be read.
    std::vector<Arrangement> load() const;

    /// Stores the list and posts notification::arrangementsChanged, also when it cannot be stored
    /// because a number is not finite or a text is not valid UTF-8. A stored value that cannot be
    /// read is kept aside before it is replaced.
    void save(std::span<const Arrangement> arrangements);

  private:
    std::optional<std::vector<Arrangement>> read() const;

    UserDefaults& defaults_;
    NotificationCenter& notifications_;
    // What was decoded last, with what it was decoded from: where many shortcuts are shown, each
    // asks for the list.
    mutable PropertyData decodedFrom_;
    mutable std::optional<std::vector<Arrangement>> decoded_;
};

/// The first arrangement with this id, or null.
const Arrangement* findArrangement(std::span<const Arrangement> arrangements, const Uuid& id);

/// What a new arrangement is called when there are `count` already.
std::string nextArrangementName(std::size_t count);

/// Appends an arrangement to the stored list.
void addArrangement(ArrangementStore& store, Arrangement arrangement);

/// Gives the first stored arrangement with this id another name; saves nothing when there is none.
void renameArrangement(ArrangementStore& store, const Uuid& id, std::string_view name);

/// Gives the first stored arrangement with this id a shortcut or takes it away; saves nothing when
/// there is none.
void setArrangementCombo(ArrangementStore& store, const Uuid& id,
                         const std::optional<KeyCombo>& combo);

/// Removes every stored arrangement with this id.
void removeArrangement(ArrangementStore& store, const Uuid& id);

}  // namespace tessellon
