// The pages of the settings on a desktop in memory.
#pragma once

#include "drag/fake_drag_views.h"
#include "engine/engine_fixture.h"
#include "settings/settings_ports.h"

#include <memory>

namespace tessellon {

class SettingsTest : public EngineTest, protected SettingsPorts {
  protected:
    SettingsTest() : SettingsPorts(desktop_, defaults_) {
        application.setKeyWindowFrame(Rect{100, 100, 900, 720});
    }

    SettingsServices settings() {
        return SettingsPorts::services(engine(), [this] {
            auto made = std::make_unique<FakeDragViews>();
            dragViews = made.get();
            return made;
        });
    }

    /// Those made last; they belong to whoever had them made.
    FakeDragViews* dragViews = nullptr;
};

}  // namespace tessellon
