// Displays that count how often they are asked.
#pragma once

#include "engine/engine_services.h"

#include <optional>
#include <vector>

namespace tessellon {

class CountingDisplays final : public Displays {
  public:
    explicit CountingDisplays(const EngineServices& services) : services_(services) {}

    std::vector<Screen> screens() const override {
        ++looks_;
        return services_.displays.screens();
    }
    std::optional<Screen> mainScreen() const override { return services_.displays.mainScreen(); }

    /// The services with these displays.
    EngineServices services() {
        return {services_.accessibility, services_.applications,  *this,
                services_.windowList,    services_.eventMonitors, services_.defaults};
    }

    int looks() const { return looks_; }

  private:
    EngineServices services_;
    mutable int looks_ = 0;
};

}  // namespace tessellon
