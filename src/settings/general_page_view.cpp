#include "settings/general_page_view.h"

#include "app/preferences.h"
#include "settings/gap_preview_view.h"
#include "settings/link_button_view.h"
#include "settings/page_header_view.h"
#include "settings/section_title_view.h"
#include "ui/bound_controls.h"
#include "ui/card.h"
#include "ui/divide.h"
#include "ui/focus_ring.h"
#include "ui/palette.h"
#include "ui/row.h"
#include "ui/text_label.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace tessellon {
namespace {

constexpr int blockSpacing = 14;
constexpr int rowSpacing = 10;
constexpr int previewSpacing = 22;
constexpr int captionSpacing = 6;
constexpr double captionSize = 11;
constexpr double errorSize = 12;

}  // namespace

GeneralPage::GeneralPage(const SettingsServices& services, QWidget* parent)
    : QWidget(parent),
      defaults_(services.defaults),
      loginItem_(services.loginItem),
      login_(services.loginItem) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(blockSpacing);
    column->addWidget(new PageHeader(
        QStringLiteral("General"),
        QStringLiteral("How Tessellon snaps your windows, and when it stays out of the way."),
        this));
    column->addWidget(new SectionTitle(QStringLiteral("Snapping"), this));
    column->addWidget(makeSnapping());
    column->addWidget(new SectionTitle(QStringLiteral("Gaps & padding"), this));
    column->addWidget(makeGaps());
    auto* const tiling = new SectionTitle(QStringLiteral("Tiling"), this);
    tiling->setChip(QStringLiteral("Beta"), palette::lavender);
    column->addWidget(tiling);
    column->addWidget(makeTiling());

    showLogin();
    showTiling();
    loginChanged_ = login_.changed().subscribe([this] { showLogin(); });
    settingsChanged_ = defaults_.changed().subscribe([this](std::string_view key) {
        if (key == preference::gap || key == preference::padding) {
            showGaps();
        } else if (key == preference::tilingEnabled) {
            showTiling();
        }
    });
}

Card* GeneralPage::makeSnapping() {
    auto* const card = new Card(rowsCardStyle(), this);
    auto& column = card->column();
    column.setSpacing(rowSpacing);
    loginRow_ = makeLoginRow();
    column.addWidget(loginRow_);
    column.addWidget(new Divide(card));
    column.addWidget(makeBoundToggleRow(
        defaults_, preference::restoreOnDrag,
        QStringLiteral("Restore size when dragged out of a zone"),
        QStringLiteral("Pull a snapped window away and it goes back to the size it had."), card));
    column.addWidget(new Divide(card));
    column.addWidget(makeBoundToggleRow(
        defaults_, preference::cycle, QStringLiteral("Repeat shortcut cycles sizes"),
        QStringLiteral("Press ⌃⌥← again and the window steps through the sizes."), card));
    return card;
}

Row* GeneralPage::makeLoginRow() {
    const auto title = QStringLiteral("Launch at login");
    loginToggle_ = new PillToggle(title);
    auto* const row = new Row(title, QString(), loginToggle_, this);
    loginError_ =
        new TextLabel(QString(), errorSize, QFont::DemiBold, palette::coral, TextWrap::words, row);
    openLoginItems_ = new LinkButton(QStringLiteral("Open Login Items"), row);
    row->addBelow(openLoginItems_);
    row->addBelow(loginError_);
    connect(loginToggle_, &QAbstractButton::clicked, this,
            [this](bool launches) { login_.choose(launches); });
    connect(openLoginItems_, &QAbstractButton::clicked, this, [this] {
        if (!loginItem_.openSystemSettings()) {
            showLoginError(QStringLiteral(
                "Couldn't find where this desktop lists the programs that start at login."));
        }
    });
    return row;
}

Card* GeneralPage::makeGaps() {
    auto* const card = new Card(rowsCardStyle(), this);
    auto* const line = new QHBoxLayout;
    line->setSpacing(previewSpacing);
    card->column().addLayout(line);

    auto* const picture = new QVBoxLayout;
    picture->setContentsMargins(FocusRing::reach, 0, 0, 0);
    picture->setSpacing(captionSpacing);
    picture->addStretch();
    preview_ = new GapPreview(defaults_.doubleForKey(preference::gap),
                              defaults_.doubleForKey(preference::padding), card);
    auto* const caption = new TextLabel(QStringLiteral("Live preview"), captionSize, QFont::Medium,
                                        palette::muted, TextWrap::none, card);
    preview_->setAccessibleName(caption->text());
    picture->addWidget(preview_);
    picture->addWidget(caption, 0, Qt::AlignHCenter);
    picture->addStretch();
    line->addLayout(picture);

    auto* const sliders = new QVBoxLayout;
    sliders->setSpacing(rowSpacing);
    line->addLayout(sliders, 1);
    const auto px = QStringLiteral("px");
    sliders->addWidget(makeBoundSliderRow(defaults_, preference::gap,
                                          {.title = QStringLiteral("Gap between windows"),
                                           .range = {0, 40},
                                           .unit = px,
                                           .color = palette::teal},
                                          card));
    sliders->addWidget(new Divide(card));
    sliders->addWidget(makeBoundSliderRow(defaults_, preference::padding,
                                          {.title = QStringLiteral("Gap at screen edges"),
                                           .range = {0, 40},
                                           .unit = px,
                                           .color = palette::amber},
                                          card));
    sliders->addWidget(new Divide(card));
    sliders->addWidget(makeBoundSliderRow(
        defaults_, preference::almostPadding,
        {.title = QStringLiteral("Almost-maximize padding"),
         .subtitle = QStringLiteral("Room left around the window for “Almost maximize”."),
         .range = {0, 160},
         .unit = px,
         .color = palette::coral},
        card));
    return card;
}

Card* GeneralPage::makeTiling() {
    auto* const card = new Card(rowsCardStyle(), this);
    card->column().setSpacing(rowSpacing);
    card->column().addWidget(makeBoundToggleRow(
        defaults_, preference::tilingEnabled, QStringLiteral("Tile this display"),
        QStringLiteral("Arrange the visible windows on one screen, only when you ask."), card));

    tilingSliders_ = new QWidget(card);
    auto* const sliders = new QVBoxLayout(tilingSliders_);
    sliders->setContentsMargins(0, 0, 0, 0);
    sliders->setSpacing(rowSpacing);
    sliders->addWidget(new Divide(tilingSliders_));
    sliders->addWidget(
        makeBoundSliderRow(defaults_, preference::maxTiles,
                           {.title = QStringLiteral("Max tiles"),
                            .subtitle = QStringLiteral("Extra windows stay where they are."),
                            .range = {2, 8},
                            .color = palette::lavender},
                           tilingSliders_));
    sliders->addWidget(new Divide(tilingSliders_));
    sliders->addWidget(makeBoundSliderRow(
        defaults_, preference::masterRatio,
        {.title = QStringLiteral("Master width"),
         .subtitle =
             QStringLiteral("The focused window gets this share; the rest stack on the right."),
         .range = {30, 80},
         .step = 5,
         .unit = QStringLiteral("%"),
         .color = palette::amber},
        tilingSliders_));
    card->column().addWidget(tilingSliders_);
    return card;
}

void GeneralPage::showLogin() {
    loginToggle_->setChecked(login_.launchAtLogin());
    const bool waits = login_.loginNeedsApproval();
    loginRow_->setSubtitle(waits ? QStringLiteral("Approve in System Settings › Login Items")
                                 : QStringLiteral("Start snapping as soon as your Mac wakes up."));
    openLoginItems_->setVisible(waits);
    const auto& error = login_.loginError();
    showLoginError(error ? QString::fromStdString(*error) : QString());
}

void GeneralPage::showLoginError(const QString& error) {
    loginError_->setText(error);
    loginError_->setVisible(!error.isEmpty());
    const auto subtitle = loginRow_->subtitle();
    loginToggle_->setAccessibleDescription(error.isEmpty() ? subtitle
                                                           : error + QLatin1Char(' ') + subtitle);
}

void GeneralPage::changeEvent(QEvent* event) {
    // The user may come back from where the desktop lists what starts at login.
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        login_.refresh();
    }
    QWidget::changeEvent(event);
}

void GeneralPage::showGaps() {
    preview_->setGaps(defaults_.doubleForKey(preference::gap),
                      defaults_.doubleForKey(preference::padding));
}

void GeneralPage::showTiling() {
    tilingSliders_->setVisible(defaults_.boolForKey(preference::tilingEnabled));
}

}  // namespace tessellon
