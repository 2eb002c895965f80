#include "known_differences.h"

#include <algorithm>

namespace tessellon::desktop {

const std::vector<KnownDifference>& knownDifferences() {
    static const std::vector<KnownDifference> table{
        {{"openbox", "metacity", "marco", "muffin", "mutter", "kwin", "icewm"},
         {Row::places},
         Subject::wholeCells,
         toTheCell,
         "Terminals ask for sizes in whole cells, and this window manager holds all windows to "
         "that: the window is smaller than its place, by less than one cell. Its corner is exact."},
        {{"metacity", "marco", "muffin", "mutter"},
         {Row::places},
         Subject::minimumSize,
         keptOnScreen,
         "A window whose smallest size is larger than its place would hang out of the screen "
         "there. "
         "This window manager pushes it back until all of it is seen."},
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
