#include "settings/zones_page_view.h"

#include "settings/page_header_view.h"

#include <QVBoxLayout>

namespace tessellon {

ZonesPage::ZonesPage(const SettingsServices& /*services*/, QWidget* parent) : QWidget(parent) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new PageHeader(
        QStringLiteral("Snap zones"),
        QStringLiteral("Hold ⌘ while dragging a window. A grid appears; let go on a zone to snap."),
        this));
}

}  // namespace tessellon
