#include "stress/schedule.h"

#include "stress/random.h"

#include <array>

namespace tessellon::stress {
namespace {

struct Row {
    Kind kind;
    std::string_view name;
    /// How often it comes, of the sum of all.
    std::size_t weight;
};

constexpr std::array rows{
    Row{Kind::press, "press", 150},
    Row{Kind::burst, "burst", 70},
    Row{Kind::snapAndCompare, "snap-and-compare", 70},
    Row{Kind::restoreAndCompare, "restore-and-compare", 50},
    Row{Kind::snapWhileClientDies, "snap-while-client-dies", 25},
    Row{Kind::activate, "activate", 40},
    Row{Kind::place, "place", 50},
    Row{Kind::maximize, "maximize", 25},
    Row{Kind::minimize, "minimize", 20},
    Row{Kind::openWindow, "open-window", 30},
    Row{Kind::closeWindow, "close-window", 15},
    Row{Kind::killClient, "kill-client", 25},
    Row{Kind::stopClient, "stop-client", 15},
    Row{Kind::drag, "drag", 150},
    Row{Kind::launcher, "launcher", 80},
    Row{Kind::panel, "panel", 70},
    Row{Kind::settingsWindow, "settings-window", 12},
    Row{Kind::editSettings, "edit-settings", 20},
    Row{Kind::breakSettings, "break-settings", 6},
    Row{Kind::breakSettingsBeforeStart, "break-settings-before-start", 3},
    Row{Kind::removeSettings, "remove-settings", 5},
    Row{Kind::makeSettingsUnwritable, "make-settings-unwritable", 5},
    Row{Kind::changeDisplays, "change-displays", 14},
    Row{Kind::grabKeyboard, "grab-keyboard", 8},
    Row{Kind::grabPointer, "grab-pointer", 8},
    Row{Kind::killWindowManager, "kill-window-manager", 10},
    Row{Kind::stopWindowManager, "stop-window-manager", 5},
    Row{Kind::killTray, "kill-tray", 8},
    Row{Kind::killCompositor, "kill-compositor", 8},
    Row{Kind::killProgram, "kill-program", 12},
    Row{Kind::killBus, "kill-bus", 2},
};

constexpr std::size_t sumOfWeights() {
    std::size_t sum = 0;
    for (const Row& row : rows) {
        sum += row.weight;
    }
    return sum;
}

constexpr bool rowsFollowKinds() {
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (static_cast<std::size_t>(rows.at(i).kind) != i) {
            return false;
        }
    }
    return true;
}
static_assert(rowsFollowKinds());

Kind drawKind(Random& random) {
    std::size_t ticket = random.below(sumOfWeights());
    for (const Row& row : rows) {
        if (ticket < row.weight) {
            return row.kind;
        }
        ticket -= row.weight;
    }
    return Kind::press;
}

bool killsProgram(Kind kind) {
    return kind == Kind::killProgram || kind == Kind::breakSettingsBeforeStart;
}

}  // namespace

std::string_view nameOf(Kind kind) {
    return rows.at(static_cast<std::size_t>(kind)).name;
}

std::vector<Action> makeSchedule(std::uint64_t seed, std::size_t actions) {
    constexpr std::size_t percent = 100;
    constexpr std::size_t longLifeBegins = 25;
    constexpr std::size_t longLifeEnds = 85;
    Random random(seed);
    std::vector<Action> schedule;
    schedule.reserve(actions);
    for (std::size_t number = 1; number <= actions; ++number) {
        const std::size_t share = number * percent / actions;
        const bool lives = share >= longLifeBegins && share < longLifeEnds;
        Action action{number, drawKind(random), random.next(),
                      lives ? Program::lives : Program::mayBeKilled};
        if (lives && killsProgram(action.kind)) {
            action.kind = Kind::press;
        }
        schedule.push_back(action);
    }
    return schedule;
}

}  // namespace tessellon::stress
