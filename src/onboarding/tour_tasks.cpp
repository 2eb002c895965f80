#include "onboarding/tour_tasks.h"

#include "shortcuts/default_shortcuts.h"
#include "shortcuts/key_labels.h"

#include <cstdint>
#include <map>
#include <string_view>
#include <utility>

namespace tessellon {
namespace {

/// What pressing the shortcut of the action is good for.
std::string_view purpose(SnapAction action) {
    switch (action) {
        case SnapAction::leftHalf:
            return "snap left";
        case SnapAction::rightHalf:
            return "snap right";
        case SnapAction::topHalf:
            return "snap to the top";
        case SnapAction::bottomHalf:
            return "snap to the bottom";
        case SnapAction::topLeft:
            return "snap top left";
        case SnapAction::topRight:
            return "snap top right";
        case SnapAction::bottomLeft:
            return "snap bottom left";
        case SnapAction::bottomRight:
            return "snap bottom right";
        case SnapAction::leftThird:
            return "snap to the left third";
        case SnapAction::centerThird:
            return "snap to the center third";
        case SnapAction::rightThird:
            return "snap to the right third";
        case SnapAction::leftTwoThirds:
            return "snap to the left two thirds";
        case SnapAction::rightTwoThirds:
            return "snap to the right two thirds";
        case SnapAction::maximize:
            return "maximize";
        case SnapAction::almostMaximize:
            return "almost maximize";
        case SnapAction::center:
            return "center";
        case SnapAction::restore:
            return "restore";
        case SnapAction::nextDisplay:
            return "move to the next display";
        case SnapAction::previousDisplay:
            break;
    }
    return "move to the previous display";
}

std::string joined(const std::vector<std::string>& glyphs) {
    std::string text;
    for (const auto& glyph : glyphs) {
        text += glyph;
    }
    return text;
}

struct Shortcut {
    SnapAction action;
    KeyCombo combo;
};

std::vector<Shortcut> registeredSnaps(const KeyBindings& bindings, const Hotkeys& hotkeys) {
    std::vector<Shortcut> found;
    for (const auto& target : hotkeys.registeredTargets()) {
        const auto* const snap = std::get_if<HotkeyTarget::Snap>(&target.kind);
        if (snap == nullptr) {
            continue;
        }
        if (auto combo = bindings.comboFor(target)) {
            found.push_back({snap->action, *std::move(combo)});
        }
    }
    return found;
}

/// The modifiers that most of the shortcuts are held with.
std::uint64_t usualModifiers(const std::vector<Shortcut>& shortcuts) {
    std::map<std::uint64_t, int> counts;
    std::uint64_t usual = shortcuts.front().combo.mods & modifier_flag::all;
    for (const auto& shortcut : shortcuts) {
        const auto mods = shortcut.combo.mods & modifier_flag::all;
        if (++counts[mods] > counts[usual]) {
            usual = mods;
        }
    }
    return usual;
}

}  // namespace

ShortcutTask shortcutTask(const KeyBindings& bindings, const Hotkeys& hotkeys) {
    auto shortcuts = registeredSnaps(bindings, hotkeys);
    if (shortcuts.empty()) {
        const auto leftHalf = HotkeyTarget::snap(SnapAction::leftHalf);
        const auto bound = bindings.comboFor(leftHalf);
        shortcuts.push_back(
            {SnapAction::leftHalf, bound ? *bound : defaultCombo(leftHalf).value_or(KeyCombo{})});
    }
    const auto& [action, combo] = shortcuts.front();
    const auto modifiers = joined(modifierGlyphs(usualModifiers(shortcuts)));
    return {"Press " + displayText(combo) + " to " + std::string(purpose(action)),
            "Any " + modifiers + (modifiers.empty() ? "" : " ") + "shortcut counts.", modifiers,
            action};
}

std::vector<TourTask> tourTasks(const std::set<Tour::Event>& done, const ShortcutTask& shortcut) {
    std::vector<TourTask> tasks;
    bool foundCurrent = false;
    for (const auto event : Tour::allEvents) {
        TourTask task{event, TaskState::next, "", ""};
        switch (event) {
            case Tour::Event::shortcut:
                task.title = shortcut.title;
                task.line = shortcut.line;
                break;
            case Tour::Event::drag:
                task.title = "Hold ⌘ and drag a window";
                task.line = "A grid appears; let go on a zone to snap.";
                break;
            case Tour::Event::launcher:
                task.title = "Press right ⌘ + / for the launcher";
                task.line = "Pick a snap from the grid, or type to search.";
                break;
        }
        if (done.contains(event)) {
            task.state = TaskState::done;
            task.line = "Nice!";
        } else if (!std::exchange(foundCurrent, true)) {
            task.state = TaskState::current;
        }
        tasks.push_back(std::move(task));
    }
    return tasks;
}

}  // namespace tessellon
