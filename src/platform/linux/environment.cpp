#include "platform/linux/environment.h"

#include <algorithm>
#include <cstdlib>

namespace tessellon {

std::string environment(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? value : "";
}

std::vector<std::string> colonList(std::string_view text) {
    std::vector<std::string> parts;
    while (!text.empty()) {
        const auto end = std::min(text.find(':'), text.size());
        if (end > 0) {
            parts.emplace_back(text.substr(0, end));
        }
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

}  // namespace tessellon
