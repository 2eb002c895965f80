// What is installed, as a list.
#pragma once

#include "platform/application_directory.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon {

class MemoryApplicationDirectory final : public ApplicationDirectory {
  public:
    /// In the order in which names are looked for.
    std::vector<InstalledApplication> installed;
    /// Installed as well, but in no menu; looked for last.
    std::vector<InstalledApplication> notShown;

    /// By the GTK application id, then by a window class that is an identifier.
    std::optional<InstalledApplication> lookUp(const ApplicationHints& hints) const override {
        const auto found = withIdentifier(hints.gtkApplicationId);
        return found ? found : withIdentifier(hints.windowClass);
    }

    std::optional<InstalledApplication> withIdentifier(std::string_view identifier) const override {
        return find(&InstalledApplication::identifier, identifier);
    }

    std::optional<InstalledApplication> named(std::string_view name) const override {
        return find(&InstalledApplication::name, name);
    }

    std::vector<InstalledApplication> shown() const override {
        auto result = installed;
        std::ranges::stable_sort(result, {}, &InstalledApplication::name);
        return result;
    }

  private:
    std::optional<InstalledApplication> find(std::string InstalledApplication::*text,
                                             std::string_view value) const {
        for (const auto* list : {&installed, &notShown}) {
            const auto found = std::ranges::find(*list, value, text);
            if (found != list->end()) {
                return *found;
            }
        }
        return std::nullopt;
    }
};

}  // namespace tessellon
