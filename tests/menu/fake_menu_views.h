// A panel of the status item that only remembers what happened to it.
#pragma once

#include "fakes/fake_key_panel.h"
#include "menu/status_menu.h"

#include <memory>
#include <vector>

namespace tessellon {

inline constexpr Size menuPanelSize{330, 600};

class FakeMenuViews final : public MenuViews, public FakeKeyPanels {
  public:
    std::unique_ptr<KeyPanel> makePanel(MenuModel& model, const Rect& area) override {
        areas.push_back(area);
        if (!available) {
            return nullptr;
        }
        return make(menuPanelSize, model.quit);
    }

    bool available = true;
    /// What each panel was told that it must not leave.
    std::vector<Rect> areas;
};

}  // namespace tessellon
