#include "settings/displays_page_view.h"

#include "settings/page_header_view.h"

#include <QVBoxLayout>

namespace tessellon {

DisplaysPage::DisplaysPage(const SettingsServices& /*services*/, QWidget* parent)
    : QWidget(parent) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new PageHeader(
        QStringLiteral("Displays"),
        QStringLiteral("Every screen Tessellon can snap to, in next / previous display order."),
        this));
}

}  // namespace tessellon
