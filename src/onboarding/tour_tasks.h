// What the welcome tour asks the user to try, in words.
#pragma once

#include "onboarding/tour.h"
#include "shortcuts/hotkeys.h"
#include "shortcuts/key_bindings.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace tessellon {

/// The first task, which depends on the shortcuts that really work here.
struct ShortcutTask {
    /// Names a shortcut to press.
    std::string title;
    std::string line;
    /// The modifiers that most shortcuts are held with, such as "⌃⌥"; "" when most have none.
    std::string modifiers;
    /// What the named shortcut does.
    SnapAction action;
    bool operator==(const ShortcutTask&) const = default;
};

/// Names the left half's shortcut where that is registered, else the first snap's that is. As long
/// as nothing could be registered yet, and where every shortcut is taken, it is the one that the
/// left half is bound to, or the built-in one where it is bound to none.
ShortcutTask shortcutTask(const KeyBindings& bindings, const Hotkeys& hotkeys);

/// The first task that is not done is the current one.
enum class TaskState : std::uint8_t { done, current, next };

struct TourTask {
    Tour::Event event;
    TaskState state;
    std::string title;
    /// "Nice!" once it is done.
    std::string line;
};

/// One for each event, in order.
std::vector<TourTask> tourTasks(const std::set<Tour::Event>& done, const ShortcutTask& shortcut);

}  // namespace tessellon
