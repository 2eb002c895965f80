#include "settings/about_page_view.h"

#include "settings/page_header_view.h"

#include <QVBoxLayout>

namespace tessellon {

AboutPage::AboutPage(const SettingsServices& /*services*/, QWidget* parent) : QWidget(parent) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(
        new PageHeader(QStringLiteral("Tessellon"),
                       QStringLiteral("Windows that snap into place. Hold ⌘ and drag, press ⌃⌥ + a "
                                      "key, or press right ⌘ + / for the launcher."),
                       this));
}

}  // namespace tessellon
