// What is done in a stress run, and in which order: a function of the seed and the number of
// actions alone. Whatever an action chooses it draws from a seed of its own, so that an action that
// draws more or less than before changes nothing about those behind it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace tessellon::stress {

enum class Kind : std::uint8_t {
    press,
    burst,
    snapAndCompare,
    restoreAndCompare,
    snapWhileClientDies,
    activate,
    place,
    maximize,
    minimize,
    openWindow,
    closeWindow,
    killClient,
    stopClient,
    drag,
    launcher,
    panel,
    settingsWindow,
    editSettings,
    breakSettings,
    breakSettingsBeforeStart,
    removeSettings,
    makeSettingsUnwritable,
    changeDisplays,
    grabKeyboard,
    grabPointer,
    killWindowManager,
    stopWindowManager,
    killTray,
    killCompositor,
    killProgram,
    killBus,
};

std::string_view nameOf(Kind kind);

/// Whether the program may be killed while the action goes on.
enum class Program : std::uint8_t { mayBeKilled, lives };

struct Action {
    std::size_t number = 0;
    Kind kind = Kind::press;
    std::uint64_t seed = 0;
    Program program = Program::mayBeKilled;
};

/// In the middle of the run, for more than half of it, the program is never killed, so that it
/// lives long enough to show what it loses.
std::vector<Action> makeSchedule(std::uint64_t seed, std::size_t actions);

}  // namespace tessellon::stress
