#include "launcher/qt_launcher_views.h"

#include "launcher/launcher_view.h"
#include "platform/qt/qt_key_panel.h"

#include <utility>

namespace tessellon {
namespace {

class LauncherPanel final : public QtKeyPanel {
  public:
    /// `window` holds the view.
    LauncherPanel(LauncherView& view, PanelWindowPointer<> window, KeyboardFocus& keyboard)
        : QtKeyPanel(std::move(window), keyboard), view_(view) {}
    // The view goes only after the event that closed it, the model at once.
    ~LauncherPanel() override { view_.detach(); }
    LauncherPanel(const LauncherPanel&) = delete;
    LauncherPanel& operator=(const LauncherPanel&) = delete;

  private:
    LauncherView& view_;
};

}  // namespace

std::unique_ptr<KeyPanel> QtLauncherViews::makePanel(LauncherModel& model) {
    auto* const view = new LauncherView(model, bindings_, compositing_);
    return std::make_unique<LauncherPanel>(*view, PanelWindowPointer<>(view), keyboard_);
}

}  // namespace tessellon
