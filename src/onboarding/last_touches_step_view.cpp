#include "onboarding/last_touches_step_view.h"

#include "app/preferences.h"
#include "onboarding/mini_menu_bar_view.h"
#include "ui/bound_controls.h"
#include "ui/card.h"
#include "ui/control_style.h"
#include "ui/divide.h"
#include "ui/palette.h"
#include "ui/row.h"

namespace tessellon {
namespace {

constexpr int headerSpacing = 28;
constexpr int rowSpacing = 18;
constexpr int cardPadding = 20;

const auto launchSubtitle = QStringLiteral("Start Tessellon when your Mac wakes up.");

}  // namespace

LastTouchesStep::LastTouchesStep(OnboardingModel& model, QWidget* parent)
    : TourStep(model, parent) {
    column().addWidget(new MiniMenuBar(this));
    column().addSpacing(headerSpacing);
    addHeader(QStringLiteral("You're all set!"),
              QStringLiteral("A few last touches. You can change any of these later in Settings."));
    column().addWidget(makeSwitches());
    column().addStretch(1);
    refresh();
}

QWidget* LastTouchesStep::makeSwitches() {
    auto& defaults = model().services().defaults;
    auto* const card = new Card({.fill = palette::paper,
                                 .radius = 18,
                                 .horizontalPadding = cardPadding,
                                 .verticalPadding = cardPadding,
                                 .border = {palette::line, control_style::outline}},
                                this);
    auto& rows = card->column();
    rows.setSpacing(rowSpacing);

    const auto launchTitle = QStringLiteral("Launch at login");
    launchAtLogin_ = new PillToggle(launchTitle);
    auto* const launchRow = new Row(launchTitle, launchSubtitle, launchAtLogin_, card);
    loginNote_ = new Note;
    launchRow->addBelow(loginNote_);
    rows.addWidget(launchRow);
    connect(launchAtLogin_, &QAbstractButton::clicked, this,
            [this](bool checked) { model().setLaunchAtLogin(checked); });

    const auto addSetting = [&](std::string_view key, const QString& title,
                                const QString& subtitle) {
        rows.addWidget(new Divide(card));
        rows.addWidget(makeBoundToggleRow(defaults, key, title, subtitle, card));
    };
    addSetting(preference::dragEnabled, QStringLiteral("⌘-drag to snap"),
               QStringLiteral("Hold ⌘ while dragging a window to show the zone grid."));
    addSetting(preference::showPreview, QStringLiteral("Show snap preview"),
               QStringLiteral("A soft teal hint shows where the window will land."));
    return card;
}

void LastTouchesStep::refresh() {
    launchAtLogin_->setChecked(model().launchAtLogin());
    const auto& note = model().loginNote();
    loginNote_->setNote(note);
    launchAtLogin_->setAccessibleDescription(
        note ? launchSubtitle + QLatin1Char(' ') + QString::fromStdString(*note) : launchSubtitle);
}

}  // namespace tessellon
