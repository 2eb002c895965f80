#include "settings/about_page_view.h"

#include "app/notification_names.h"
#include "ui/card.h"
#include "ui/focus_ring.h"
#include "ui/glyph.h"
#include "ui/palette.h"
#include "ui/pill_button.h"
#include "ui/pill_toggle.h"
#include "ui/row.h"
#include "ui/text_label.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace tessellon {
namespace {

constexpr int glyphSize = 104;
constexpr double nameSize = 34;
constexpr double versionSize = 13;
constexpr double lineSize = 14.5;
// Keeps the way of each key together.
constexpr int lineWidth = 488;
constexpr int buttonSpacing = 12;

// The page's parts from top to bottom.
constexpr int aboveGlyph = 72;
constexpr int belowGlyph = 14;
constexpr int belowName = 2;
constexpr int belowVersion = 18;
constexpr int belowLine = 26;
constexpr int belowButtons = 30;

TextLabel* centered(TextLabel* label) {
    label->setAlignment(Qt::AlignHCenter);
    return label;
}

}  // namespace

AboutPage::AboutPage(const SettingsServices& services, QWidget* parent) : QWidget(parent) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addSpacing(aboveGlyph);
    column->addWidget(new Glyph(glyphSize, this), 0, Qt::AlignHCenter);
    column->addSpacing(belowGlyph);
    column->addWidget(centered(new TextLabel(QStringLiteral("Tessellon"), nameSize, QFont::Bold,
                                             palette::ink, TextWrap::words, this)));
    column->addSpacing(belowName);
    const auto version =
        services.version.empty() ? QStringLiteral("1.0") : QString::fromStdString(services.version);
    column->addWidget(
        centered(new TextLabel(QStringLiteral("Version ") + version, versionSize, QFont::DemiBold,
                               palette::muted, TextWrap::words, this)));
    column->addSpacing(belowVersion);
    auto* const line = centered(
        new TextLabel(QStringLiteral("Windows that snap into place. Hold ⌘ and drag, press ⌃⌥ + a "
                                     "key, or press right ⌘ + / for the launcher."),
                      lineSize, QFont::Medium, palette::ink, TextWrap::words, this));
    line->setFixedWidth(lineWidth);
    column->addWidget(line, 0, Qt::AlignHCenter);
    column->addSpacing(belowLine);
    column->addWidget(makeButtons(services), 0, Qt::AlignHCenter);
    column->addSpacing(belowButtons);
    column->addWidget(makeUpdatesRow(services.updater));
    column->addStretch();
}

QWidget* AboutPage::makeButtons(const SettingsServices& services) {
    auto* const buttons = new QWidget(this);
    auto* const line = new QHBoxLayout(buttons);
    line->setContentsMargins(FocusRing::reach, FocusRing::reach, FocusRing::reach,
                             FocusRing::reach);
    line->setSpacing(buttonSpacing);
    auto* const tour =
        new PillButton(QStringLiteral("Show welcome tour"), PillButtonStyle::primary, buttons);
    tour->setSymbol(Symbol::sparkles);
    connect(tour, &QAbstractButton::clicked, this, [&notifications = services.notifications] {
        notifications.post(notification::showTour);
    });
    line->addWidget(tour);
    auto* const check =
        new PillButton(QStringLiteral("Check for Updates…"), PillButtonStyle::quiet, buttons);
    check->setSymbol(Symbol::arrowTriangle2Circlepath);
    connect(check, &QAbstractButton::clicked, this,
            [&updater = services.updater] { updater.checkForUpdates(); });
    line->addWidget(check);
    return buttons;
}

QWidget* AboutPage::makeUpdatesRow(Updater& updater) {
    const auto title = QStringLiteral("Automatically check for updates");
    auto* const toggle = new PillToggle(title);
    toggle->setChecked(updater.automaticallyChecksForUpdates());
    connect(toggle, &QAbstractButton::clicked, this,
            [&updater](bool checks) { updater.setAutomaticallyChecksForUpdates(checks); });
    updaterChanged_ = updater.changed().subscribe(
        [&updater, toggle] { toggle->setChecked(updater.automaticallyChecksForUpdates()); });
    auto* const card = new Card(rowsCardStyle(), this);
    card->column().addWidget(new Row(title, QString(), toggle, card));
    return card;
}

}  // namespace tessellon
