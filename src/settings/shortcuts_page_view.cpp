#include "settings/shortcuts_page_view.h"

#include "settings/elided_label_view.h"
#include "settings/page_header_view.h"
#include "shortcuts/shortcut_recorder_view.h"
#include "ui/card.h"
#include "ui/dot.h"
#include "ui/focus_ring.h"
#include "ui/mini_screen.h"
#include "ui/palette.h"
#include "ui/pill_button.h"
#include "ui/symbol_label.h"
#include "ui/text.h"
#include "ui/text_label.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <array>
#include <string_view>

namespace tessellon {
namespace {

constexpr int blockSpacing = 14;
constexpr double statusSize = 11.5;
constexpr double statusOpacity = 0.22;

constexpr int groupHorizontalPadding = 16;
constexpr int groupSpacing = 8;
constexpr double groupTitleSize = 15;
constexpr int dotSize = 10;
constexpr int dotSpacing = 8;
constexpr int columnSpacing = 20;
constexpr int lineSpacing = 4;
constexpr int rowSpacing = 10;
constexpr QSize pictureSize{32, 21};
constexpr double titleSize = 13;
// Longer titles go on beside a shortcut that leaves little room.
constexpr int titleLines = 2;
constexpr double keySize = 20;

constexpr double headingSize = 13.5;
constexpr int sparklesSize = 17;
constexpr double noteSize = 12;
constexpr int buttonSpacing = 10;

constexpr std::array<std::string_view, actionGroups.size()> names{"Halves", "Quarters", "Thirds",
                                                                  "Other"};

QHBoxLayout* makeRow(SnapAction action, Recorder& recorder, QWidget* parent) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(rowSpacing);
    row->addWidget(new MiniScreen(action, pictureSize, parent));
    row->addWidget(
        new ElidedLabel(toQString(title(action)),
                        {.size = titleSize, .color = palette::ink, .lines = titleLines}, parent),
        1);
    row->addWidget(new ShortcutRecorder(recorder, HotkeyTarget::snap(action), keySize, parent));
    return row;
}

Card* makeGroup(std::size_t index, Recorder& recorder, QWidget* parent) {
    constexpr int columns = 2;
    const auto actions = actionGroups[index];
    auto* const card =
        new Card({.fill = palette::paper, .horizontalPadding = groupHorizontalPadding}, parent);
    card->column().setSpacing(groupSpacing);
    auto* const heading = new QHBoxLayout;
    heading->setSpacing(dotSpacing);
    heading->addWidget(new TextLabel(toQString(names[index]), groupTitleSize, QFont::Bold,
                                     palette::ink, TextWrap::none, card));
    heading->addWidget(new Dot(dotSize, palette::groupColor(actions.front()), card));
    heading->addStretch();
    card->column().addLayout(heading);
    auto* const grid = new QGridLayout;
    grid->setHorizontalSpacing(columnSpacing);
    grid->setVerticalSpacing(lineSpacing);
    for (int column = 0; column < columns; ++column) {
        grid->setColumnStretch(column, 1);
    }
    for (int i = 0; i < static_cast<int>(actions.size()); ++i) {
        grid->addLayout(makeRow(actions[static_cast<std::size_t>(i)], recorder, card), i / columns,
                        i % columns);
    }
    card->column().addLayout(grid);
    return card;
}

}  // namespace

ShortcutsPage::ShortcutsPage(const SettingsServices& services, QWidget* parent)
    : QWidget(parent),
      services_(services),
      offer_(services.keyBindings, services.hotkeys, services.notifications) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, FocusRing::reach);
    column->setSpacing(blockSpacing);
    column->addWidget(new PageHeader(
        QStringLiteral("Shortcuts"),
        QStringLiteral("Click any shortcut to change it. Esc cancels, ⌫ clears it."), this));
    addStatus();
    addGroups();
    addNote();
    addButtons();
    column->addStretch();

    recorderChanged_ = services_.recorder.changed().subscribe([this] { follow(); });
    offerChanged_ = offer_.changed().subscribe([this] { showOffer(); });
    follow();
    showOffer();
}

void ShortcutsPage::addStatus() {
    auto* const card =
        new Card({.fill = palette::withOpacity(palette::lavender, statusOpacity)}, this);
    status_ = new ElidedLabel({}, {.size = statusSize, .color = palette::muted}, card);
    card->column().addWidget(status_);
    layout()->addWidget(card);
}

void ShortcutsPage::addGroups() {
    for (std::size_t i = 0; i < actionGroups.size(); ++i) {
        layout()->addWidget(makeGroup(i, services_.recorder, this));
    }
}

void ShortcutsPage::addNote() {
    auto* const card = new Card({.fill = palette::cream}, this);
    card->column().setSpacing(4);
    auto* const heading = new QHBoxLayout;
    heading->setSpacing(6);
    heading->addWidget(
        new SymbolLabel(Symbol::sparkles, sparklesSize, palette::ink, symbolStroke, card));
    heading->addWidget(
        new ElidedLabel(QStringLiteral("Make them yours"),
                        {.size = headingSize, .weight = QFont::DemiBold, .color = palette::ink},
                        card),
        1);
    card->column().addLayout(heading);
    note_ = new ElidedLabel({}, {.size = noteSize, .color = palette::muted}, card);
    card->column().addWidget(note_);
    layout()->addWidget(card);
}

void ShortcutsPage::addButtons() {
    auto* const row = new QHBoxLayout;
    row->setContentsMargins(FocusRing::reach, 0, 0, 0);
    row->setSpacing(buttonSpacing);
    reset_ = new PillButton(QStringLiteral("Reset to defaults"), PillButtonStyle::quiet, this);
    reset_->setSymbol(Symbol::arrowCounterclockwise);
    connect(reset_, &QAbstractButton::clicked, this,
            [this] { services_.keyBindings.resetToDefaults(); });
    row->addWidget(reset_);
    useControlCommand_ =
        new PillButton(QStringLiteral("Use ⌃⌘ instead of ⌃⌥"), PillButtonStyle::primary, this);
    useControlCommand_->setAccessibleName(
        QStringLiteral("Use Control Super instead of Control Alt"));
    connect(useControlCommand_, &QAbstractButton::clicked, this, [this] { offer_.accept(); });
    row->addWidget(useControlCommand_);
    row->addStretch();
    static_cast<QVBoxLayout*>(layout())->addLayout(row);
    // Keyboards here have other names on these keys.
    layout()->addWidget(new TextLabel(QStringLiteral("⌃ is Control, ⌥ Alt, ⇧ Shift and ⌘ Super."),
                                      noteSize, QFont::Medium, palette::muted, TextWrap::words,
                                      this));
}

void ShortcutsPage::follow() {
    const auto& hotkeys = services_.hotkeys;
    status_->setText(QString::fromStdString(hotkeys.statusText()));
    status_->setColor(hotkeys.takenTargets().empty() ? palette::muted : palette::coral);
    const auto& note = services_.recorder.note();
    note_->setText(note ? QString::fromStdString(*note)
                        : QStringLiteral("Defaults start with ⌃⌥. Use any key with ⌃, ⌥ or ⌘."));
    note_->setColor(note ? palette::coral : palette::muted);
}

void ShortcutsPage::showOffer() {
    if (!offer_.isDue() && useControlCommand_->hasFocus()) {
        reset_->setFocus(Qt::OtherFocusReason);
    }
    useControlCommand_->setVisible(offer_.isDue());
}

}  // namespace tessellon
