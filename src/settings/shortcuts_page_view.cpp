#include "settings/shortcuts_page_view.h"

#include "settings/page_header_view.h"

#include <QVBoxLayout>

namespace tessellon {

ShortcutsPage::ShortcutsPage(const SettingsServices& /*services*/, QWidget* parent)
    : QWidget(parent) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(new PageHeader(
        QStringLiteral("Shortcuts"),
        QStringLiteral("Click any shortcut to change it. Esc cancels, ⌫ clears it."), this));
}

}  // namespace tessellon
