#include "settings/zones_page_view.h"

#include "app/preferences.h"
#include "settings/page_header_view.h"
#include "settings/page_note_view.h"
#include "settings/section_title_view.h"
#include "settings/zone_grid_picture_view.h"
#include "ui/bound_controls.h"
#include "ui/card.h"
#include "ui/divide.h"
#include "ui/pill_button.h"

#include <QHideEvent>
#include <QVBoxLayout>

namespace tessellon {
namespace {

constexpr int spacing = 14;
constexpr int rowSpacing = 10;

}  // namespace

ZonesPage::ZonesPage(const SettingsServices& services, QWidget* parent)
    : QWidget(parent), demo_(services.engine, services.runLoop, services.makeDragViews) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    column->addWidget(new PageHeader(
        QStringLiteral("Snap zones"),
        QStringLiteral("Hold ⌘ while dragging a window. A grid appears; let go on a zone to snap."),
        this));

    column->addWidget(new SectionTitle(QStringLiteral("Zone grid"), this));
    column->addWidget(makePageNote(
        QStringLiteral("Plain drags move freely. Press or release ⌘ mid-drag to show or hide the "
                       "grid."),
        this));
    column->addWidget(new ZoneGridPicture(this));

    column->addWidget(new SectionTitle(QStringLiteral("Behaviour"), this));
    auto* const rows = new Card(rowsCardStyle(), this);
    rows->column().setSpacing(rowSpacing);
    rows->column().addWidget(makeBoundToggleRow(
        services.defaults, preference::dragEnabled, QStringLiteral("⌘-drag to snap"),
        QStringLiteral("Show the zone grid while you hold ⌘ and drag a window."), rows));
    rows->column().addWidget(new Divide(rows));
    auto* const preview = makeBoundToggleRow(
        services.defaults, preference::showPreview, QStringLiteral("Show snap preview"),
        QStringLiteral("A soft teal outline shows where the window will land."), rows);
    auto* const seeIt =
        new PillButton(QStringLiteral("See it"), PillButtonStyle::quiet, PillButtonSize::small);
    seeIt->setSymbol(Symbol::eye);
    connect(seeIt, &QAbstractButton::clicked, this, [this] { demo_.show(); });
    preview->addBeside(seeIt);
    rows->column().addWidget(preview);
    column->addWidget(rows);
    column->addStretch();
}

void ZonesPage::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    // Nothing of ours stays on the screen when the window is closed.
    if (!event->spontaneous()) {
        demo_.hide();
    }
}

}  // namespace tessellon
