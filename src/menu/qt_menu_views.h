// The status item's panel on the screen.
#pragma once

#include "menu/status_menu.h"
#include "platform/compositing.h"
#include "platform/keyboard_focus.h"
#include "platform/user_defaults.h"

#include <memory>

namespace tessellon {

class QtMenuViews final : public MenuViews {
  public:
    /// All of them must outlive the views and their panels; `defaults` are the settings that the
    /// panel's switches show and change.
    QtMenuViews(KeyboardFocus& keyboard, UserDefaults& defaults, Compositing& compositing)
        : keyboard_(keyboard), defaults_(defaults), compositing_(compositing) {}

    std::unique_ptr<KeyPanel> makePanel(MenuModel& model, const Rect& area) override;

  private:
    KeyboardFocus& keyboard_;
    UserDefaults& defaults_;
    Compositing& compositing_;
};

}  // namespace tessellon
