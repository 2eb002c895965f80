#include "updates/qt_update_views.h"

#include "platform/qt/qt_window.h"
#include "ui/glyph.h"

namespace tessellon {

std::unique_ptr<Window> QtUpdateViews::makeWindow(UpdateModel& model) {
    return std::make_unique<QtWindow>(
        displays_, QtWindowContent{std::make_unique<UpdateView>(model, openPage_),
                                   QStringLiteral("Tessellon Updates"), QSize(), glyphIcon()});
}

}  // namespace tessellon
