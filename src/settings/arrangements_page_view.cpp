#include "settings/arrangements_page_view.h"

#include "settings/page_header_view.h"

#include <QVBoxLayout>

namespace tessellon {

ArrangementsPage::ArrangementsPage(const SettingsServices& /*services*/, QWidget* parent)
    : QWidget(parent) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new PageHeader(
        QStringLiteral("Arrangements"),
        QStringLiteral(
            "Save where your windows are, then put them all back with one click or shortcut."),
        this));
}

}  // namespace tessellon
