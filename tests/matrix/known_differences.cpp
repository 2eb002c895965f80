#include "known_differences.h"

#include <algorithm>

namespace tessellon::desktop {

namespace {

constexpr std::string_view keysEndDrags =
    "On i3 any key that goes down ends the drag, and the window goes back to where it came from. "
    "Hold Super before you press the button.";

}  // namespace

const std::vector<KnownDifference>& knownDifferences() {
    static const std::vector<KnownDifference> table{
        {{"openbox", "metacity", "marco", "muffin", "mutter", "kwin", "icewm"},
         {Row::places, Row::cycle, Row::displayMoves, Row::dragCommandFirst, Row::dragCommandLater},
         Subject::wholeCells,
         toTheCell,
         "Terminals ask for sizes in whole cells, and this window manager holds all windows to "
         "that: the window is smaller than its place, by less than one cell. Its corner is exact."},
        {{"metacity", "marco", "muffin", "mutter"},
         {Row::places},
         Subject::minimumSize,
         keptOnScreen,
         "A window whose smallest size is larger than its place begins in the corner of its place "
         "and reaches over the other edges, where need be out of the screen; where the table says "
         "exact, it stays so. This window manager pushes it back until all of it is seen."},
        {{"icewm"},
         {Row::places},
         Subject::minimumSize,
         keptOnScreen,
         "IceWM leaves it to a program whether its window gets smaller than its smallest size. "
         "When the program takes its size back, IceWM pushes the window until all of it is seen.",
         Occurs::sometimes},
        {{"i3"},
         {Row::places, Row::restore, Row::restoreAfterRestart},
         Subject::maximized,
         none,
         "i3 has no maximized windows."},
        {{"i3"},
         {Row::tile, Row::arrangement},
         Subject::minimized,
         none,
         "i3 has no minimized windows."},
        {{"i3"},
         {Row::tile},
         Subject::fullScreen,
         hidesOthers,
         "On i3 nothing else is seen while a window is full screen, so there is nothing to tile."},
        {{"i3"}, {Row::dragCommandLater}, Subject::plain, stays, keysEndDrags},
        {{"i3"}, {Row::dragCommandLater}, Subject::wholeCells, stays, keysEndDrags},
        {{"i3"}, {Row::dragCommandLater}, Subject::qt, stays, keysEndDrags},
        {{"i3"}, {Row::dragCommandLater}, Subject::ownDecorations, stays, keysEndDrags},
    };
    return table;
}

const KnownDifference* knownDifference(std::string_view windowManager, Row row, Subject subject) {
    const auto contains = [](const auto& list, const auto& value) {
        return std::find(list.begin(), list.end(), value) != list.end();
    };
    const auto& table = knownDifferences();
    const auto found = std::find_if(table.begin(), table.end(), [&](const auto& difference) {
        return difference.subject == subject && contains(difference.rows, row) &&
               contains(difference.windowManagers, windowManager);
    });
    return found != table.end() ? &*found : nullptr;
}

}  // namespace tessellon::desktop
