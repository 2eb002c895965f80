#include "launcher/qt_launcher_views.h"

#include "launcher/launcher_view.h"
#include "platform/qt/qt_key_panel.h"

namespace tessellon {

std::unique_ptr<KeyPanel> QtLauncherViews::makePanel(LauncherModel& model, const Rect& area) {
    return std::make_unique<QtModelPanel<LauncherView>>(
        PanelWindowPointer<LauncherView>(new LauncherView(model, bindings_, compositing_, area)),
        keyboard_);
}

}  // namespace tessellon
