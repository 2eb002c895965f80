#include "platform/linux/current_desktop.h"

#include "platform/linux/environment.h"

namespace tessellon {

std::vector<std::string> currentDesktops() {
    return colonList(environment("XDG_CURRENT_DESKTOP"));
}

}  // namespace tessellon
