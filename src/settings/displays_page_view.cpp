#include "settings/displays_page_view.h"

#include "settings/display_card_view.h"
#include "settings/page_header_view.h"
#include "settings/page_note_view.h"

#include <QVBoxLayout>

namespace tessellon {
namespace {

constexpr int spacing = 14;

}  // namespace

DisplaysPage::DisplaysPage(const SettingsServices& services, QWidget* parent)
    : QWidget(parent),
      model_(services.engine.services().displays, services.engine.screens(), services.defaults) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    column->addWidget(new PageHeader(
        QStringLiteral("Displays"),
        QStringLiteral("Every screen Tessellon can snap to, in next / previous display order."),
        this));
    column->addWidget(makePageNote(
        QStringLiteral("Next display (⌃⌥⌘→) moves a window down this list; previous display (⌃⌥⌘←) "
                       "moves it up."),
        this));
    int position = 0;
    for (const auto& display : model_.displays()) {
        column->addWidget(new DisplayCard(model_, display, ++position, this));
    }
    column->addStretch();
}

}  // namespace tessellon
