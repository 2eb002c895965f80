#include "settings/rules_page_view.h"

#include "settings/page_header_view.h"

#include <QVBoxLayout>

namespace tessellon {

RulesPage::RulesPage(const SettingsServices& /*services*/, QWidget* parent) : QWidget(parent) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new PageHeader(QStringLiteral("Rules"),
                                     QStringLiteral("Some apps just don't like being snapped. Tell "
                                                    "Tessellon once and it leaves them alone."),
                                     this));
}

}  // namespace tessellon
