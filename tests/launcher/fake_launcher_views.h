// A launcher panel that only remembers what happened to it.
#pragma once

#include "fakes/fake_key_panel.h"
#include "launcher/launcher.h"

#include <memory>
#include <vector>

namespace tessellon {

inline constexpr Size launcherPanelSize{472, 632};

class FakeLauncherViews final : public LauncherViews, public FakeKeyPanels {
  public:
    std::unique_ptr<KeyPanel> makePanel(LauncherModel& model, const Rect& area) override {
        areas.push_back(area);
        return make(launcherPanelSize, model.run);
    }

    /// What each panel was told that it must not leave.
    std::vector<Rect> areas;
};

}  // namespace tessellon
