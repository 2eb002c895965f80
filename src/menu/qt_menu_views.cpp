#include "menu/qt_menu_views.h"

#include "menu/menu_view.h"
#include "platform/qt/qt_key_panel.h"

#include <utility>

namespace tessellon {
namespace {

class MenuPanel final : public QtKeyPanel {
  public:
    /// `window` holds the view.
    MenuPanel(MenuView& view, PanelWindowPointer<> window, KeyboardFocus& keyboard)
        : QtKeyPanel(std::move(window), keyboard), view_(view) {}
    // The view goes only after the event that closed it, the model at once.
    ~MenuPanel() override { view_.detach(); }
    MenuPanel(const MenuPanel&) = delete;
    MenuPanel& operator=(const MenuPanel&) = delete;

  private:
    MenuView& view_;
};

}  // namespace

std::unique_ptr<KeyPanel> QtMenuViews::makePanel(MenuModel& model, const Rect& area) {
    auto* const view = new MenuView(model, defaults_, compositing_, area);
    return std::make_unique<MenuPanel>(*view, PanelWindowPointer<>(view), keyboard_);
}

}  // namespace tessellon
