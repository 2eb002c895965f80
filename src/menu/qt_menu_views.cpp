#include "menu/qt_menu_views.h"

#include "menu/menu_view.h"
#include "platform/qt/qt_key_panel.h"

namespace tessellon {

std::unique_ptr<KeyPanel> QtMenuViews::makePanel(MenuModel& model, const Rect& area) {
    return std::make_unique<QtModelPanel<MenuView>>(
        PanelWindowPointer<MenuView>(new MenuView(model, defaults_, compositing_, area)),
        keyboard_);
}

}  // namespace tessellon
