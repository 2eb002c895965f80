// Where the program cannot be exact, and what the user is told about it. A cell of the matrix is
// right when its outcome is `exact`, or the one that stands here; a difference that does not occur
// any more is as wrong as a new one.
#pragma once

#include "rows.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon::desktop {

/// The outcome of a check that found what the program promises.
inline constexpr std::string_view exact = "exact";
/// A window that takes whole cells only is smaller than asked for, by less than one.
inline constexpr std::string_view toTheCell = "to the cell";
/// A window that is larger than its place was moved so that all of it is seen.
inline constexpr std::string_view keptOnScreen = "kept on screen";
/// Nothing moved.
inline constexpr std::string_view stays = "stays where it was";
/// The window manager has no such state or window.
inline constexpr std::string_view none = "there is none";
/// Nothing else is shown beside it, so that nothing can be tried.
inline constexpr std::string_view hidesOthers = "hides all others";

/// Whether a difference is there every time, or depends on what a program does.
enum class Occurs : std::uint8_t { always, sometimes };

struct KnownDifference {
    /// Window managers that it holds for.
    std::vector<std::string_view> windowManagers;
    std::vector<Row> rows;
    Subject subject;
    std::string_view outcome;
    /// Why, in a sentence for the user. The same sentence makes the same note.
    std::string_view note;
    Occurs occurs = Occurs::always;
};

const std::vector<KnownDifference>& knownDifferences();

/// The one for a cell, or null.
const KnownDifference* knownDifference(std::string_view windowManager, Row row, Subject subject);

}  // namespace tessellon::desktop
