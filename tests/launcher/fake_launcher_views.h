// A launcher panel that only remembers what happened to it.
#pragma once

#include "fakes/fake_key_panel.h"
#include "launcher/launcher.h"

#include <memory>

namespace tessellon {

inline constexpr Size launcherPanelSize{472, 632};

class FakeLauncherViews final : public LauncherViews, public FakeKeyPanels {
  public:
    std::unique_ptr<KeyPanel> makePanel(LauncherModel& model) override {
        return make(launcherPanelSize, model.run);
    }
};

}  // namespace tessellon
