#include "drag/drag_switch.h"

#include "app/preferences.h"

namespace tessellon {

bool isDragSwitchedOn(const UserDefaults& defaults) {
    return defaults.boolForKey(preference::dragEnabled) && !defaults.boolForKey(preference::paused);
}

}  // namespace tessellon
