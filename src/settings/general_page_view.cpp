#include "settings/general_page_view.h"

#include "settings/page_header_view.h"

#include <QVBoxLayout>

namespace tessellon {

GeneralPage::GeneralPage(const SettingsServices& /*services*/, QWidget* parent) : QWidget(parent) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new PageHeader(
        QStringLiteral("General"),
        QStringLiteral("How Tessellon snaps your windows, and when it stays out of the way."),
        this));
}

}  // namespace tessellon
