#include "platform/linux/current_desktop.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace tessellon {

std::vector<std::string> currentDesktops() {
    std::vector<std::string> desktops;
    const char* variable = std::getenv("XDG_CURRENT_DESKTOP");
    std::string_view rest = variable != nullptr ? variable : "";
    while (!rest.empty()) {
        const auto end = std::min(rest.find(':'), rest.size());
        if (end > 0) {
            desktops.emplace_back(rest.substr(0, end));
        }
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return desktops;
}

}  // namespace tessellon
