// The launcher's panel on the screen.
#pragma once

#include "launcher/launcher.h"
#include "platform/compositing.h"
#include "platform/keyboard_focus.h"
#include "shortcuts/key_bindings.h"

#include <memory>

namespace tessellon {

class QtLauncherViews final : public LauncherViews {
  public:
    /// All of them must outlive the views and their panels; `bindings` tells the shortcuts.
    QtLauncherViews(KeyboardFocus& keyboard, const KeyBindings& bindings, Compositing& compositing)
        : keyboard_(keyboard), bindings_(bindings), compositing_(compositing) {}

    std::unique_ptr<KeyPanel> makePanel(LauncherModel& model, const Rect& area) override;

  private:
    KeyboardFocus& keyboard_;
    const KeyBindings& bindings_;
    Compositing& compositing_;
};

}  // namespace tessellon
