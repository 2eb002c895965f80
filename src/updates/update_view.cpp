#include "updates/update_view.h"

#include "ui/accessible_role.h"
#include "ui/card.h"
#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/glyph.h"
#include "ui/palette.h"
#include "ui/pill_button.h"
#include "ui/pill_toggle.h"
#include "ui/scroll_bar.h"
#include "ui/text.h"
#include "ui/text_label.h"
#include "ui/widget_colors.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QShowEvent>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>
#include <variant>

namespace tessellon {
namespace {

constexpr int contentWidth = 392;
constexpr int margin = 24;
constexpr int spacing = 18;
constexpr int glyphSize = 52;
constexpr int glyphSpacing = 18;
constexpr int textWidthBesideGlyph = contentWidth - glyphSize - glyphSpacing;
constexpr int buttonSpacing = 12;

constexpr double headlineSize = 18;
constexpr double textSize = 13;

constexpr double cardRadius = 14;
constexpr int cardPadding = 12;
constexpr int mostNotesHeight = 190;

TextLabel* makeLabel(double size, QFont::Weight weight, const QColor& color, int width,
                     QWidget* parent) {
    auto* const label = new TextLabel({}, size, weight, color, TextWrap::words, parent);
    label->setFixedWidth(width);
    return label;
}

struct Words {
    QString headline;
    QString text;
};

/// What a state is called, and what it means.
struct Describe {
    QString program;

    Words operator()(const Checking& /*state*/) const {
        return {QStringLiteral("Checking…"),
                QStringLiteral("Looking for a version newer than %1.").arg(program)};
    }
    Words operator()(const UpToDate& /*state*/) const {
        return {QStringLiteral("Tessellon is up to date"),
                QStringLiteral("You have version %1, and there is no newer one.").arg(program)};
    }
    Words operator()(const Update& update) const {
        return {QStringLiteral("Tessellon %1 is available").arg(toQString(update.version.text())),
                QStringLiteral("You have version %1.").arg(program)};
    }
    Words operator()(const CheckFailed& failure) const {
        return {QStringLiteral("The check did not work"), toQString(failure.problem)};
    }
    Words operator()(const NoFeed& /*state*/) const {
        return {QStringLiteral("No update feed"),
                QStringLiteral("This build of Tessellon knows no update feed, so it cannot look "
                               "for newer versions. You have version %1.")
                    .arg(program)};
    }
};

}  // namespace

UpdateView::UpdateView(UpdateModel& model, OpenPage openPage, QWidget* parent)
    : QWidget(parent), model_(model), openPage_(std::move(openPage)) {
    setAccessibleRole(*this, QAccessible::Grouping);
    setWindowColors(*this);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(spacing);
    column->addLayout(makeWords());
    column->addWidget(makeNotes());
    column->addLayout(makeChoice());
    column->addLayout(makeButtons());
    changed_ = model.changed().subscribe([this] { refresh(); });
    choiceChanged_ = model.updater().changed().subscribe([this] { refreshChoice(); });
    refresh();
    refreshChoice();
}

QHBoxLayout* UpdateView::makeWords() {
    auto* const line = new QHBoxLayout;
    line->setSpacing(glyphSpacing);
    line->addWidget(new Glyph(glyphSize, this), 0, Qt::AlignTop);
    auto* const words = new QVBoxLayout;
    words->setSpacing(4);
    headline_ = makeLabel(headlineSize, QFont::Bold, palette::ink, textWidthBesideGlyph, this);
    text_ = makeLabel(textSize, QFont::Medium, palette::muted, textWidthBesideGlyph, this);
    words->addStretch();
    words->addWidget(headline_);
    words->addWidget(text_);
    words->addStretch();
    line->addLayout(words);
    return line;
}

QWidget* UpdateView::makeNotes() {
    auto* const card = new Card({.fill = palette::paper,
                                 .radius = cardRadius,
                                 .horizontalPadding = cardPadding,
                                 .verticalPadding = cardPadding,
                                 .border = {palette::ink, control_style::outline}},
                                this);
    card->setFixedWidth(contentWidth);
    notesCard_ = card;
    notes_ = new QPlainTextEdit(card);
    notes_->setReadOnly(true);
    notes_->setTabChangesFocus(true);
    notes_->setFrameShape(QFrame::NoFrame);
    notes_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    notes_->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    notes_->setContextMenuPolicy(Qt::NoContextMenu);
    notes_->setFont(interfaceFont(textSize));
    notes_->document()->setDocumentMargin(0);
    notes_->setVerticalScrollBar(new ScrollBar(notes_));
    notes_->setAccessibleName(QStringLiteral("What is new"));
    setTextColors(*notes_, palette::paper);
    new FocusRing(*notes_, FocusRing::reach);
    card->column().addWidget(notes_);
    return card;
}

QHBoxLayout* UpdateView::makeChoice() {
    auto* const line = new QHBoxLayout;
    choiceLabel_ = makeLabel(textSize, QFont::DemiBold, palette::ink, contentWidth / 2, this);
    choiceLabel_->setText(QStringLiteral("Check once a day"));
    choice_ = new PillToggle(choiceLabel_->text(), this);
    line->addWidget(choiceLabel_);
    line->addStretch();
    line->addWidget(choice_);
    connect(choice_, &QAbstractButton::clicked, this,
            [this](bool checked) { model_.updater().setAutomaticallyChecksForUpdates(checked); });
    return line;
}

QHBoxLayout* UpdateView::makeButtons() {
    auto* const line = new QHBoxLayout;
    line->setSpacing(buttonSpacing);
    line->addStretch();
    close_ = new PillButton(QStringLiteral("Close"), PillButtonStyle::quiet, this);
    tryAgain_ = new PillButton(QStringLiteral("Try again"), PillButtonStyle::primary, this);
    open_ = new PillButton(QStringLiteral("Open page"), PillButtonStyle::primary, this);
    for (auto* const button : {close_, tryAgain_, open_}) {
        line->addWidget(button);
    }
    connect(close_, &QAbstractButton::clicked, this, [this] { window()->close(); });
    connect(tryAgain_, &QAbstractButton::clicked, this,
            [this] { model_.updater().checkForUpdates(); });
    connect(open_, &QAbstractButton::clicked, this, [this] { this->openPage(); });
    return line;
}

void UpdateView::refresh() {
    const auto& state = model_.state();
    const auto words = std::visit(Describe{toQString(model_.program().text())}, state);
    headline_->setText(words.headline);
    text_->setText(words.text);
    text_->setTextInteractionFlags(Qt::NoTextInteraction);
    setAccessibleName(words.headline);
    setAccessibleDescription(words.text);

    const auto* const update = std::get_if<Update>(&state);
    showNotes(update != nullptr ? toQString(update->notes) : QString());
    const bool hasFeed = !std::holds_alternative<NoFeed>(state);
    choiceLabel_->setVisible(hasFeed);
    choice_->setVisible(hasFeed);
    // The button that goes would hand the keyboard to whatever comes next.
    close_->setFocus(Qt::ActiveWindowFocusReason);
    open_->setVisible(update != nullptr);
    tryAgain_->setVisible(std::holds_alternative<CheckFailed>(state));
    focusPrimary();
}

void UpdateView::focusPrimary() {
    for (auto* const button : {open_, tryAgain_, close_}) {
        if (!button->isHidden()) {
            button->setFocus(Qt::ActiveWindowFocusReason);
            return;
        }
    }
}

void UpdateView::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // What had the focus before the view was put into its window has lost it.
    if (!event->spontaneous()) {
        focusPrimary();
    }
}

void UpdateView::refreshChoice() {
    choice_->setChecked(model_.updater().automaticallyChecksForUpdates());
}

void UpdateView::showNotes(const QString& notes) {
    notesCard_->setVisible(!notes.isEmpty());
    notes_->setPlainText(notes);
    // The field lays its own document out only once it is shown.
    const auto copy = std::unique_ptr<QTextDocument>(notes_->document()->clone());
    copy->setDefaultFont(notes_->font());
    copy->setTextWidth(contentWidth - 2 * cardPadding);
    const int height = static_cast<int>(std::ceil(copy->size().height()));
    const bool scrolls = height > mostNotesHeight;
    notes_->setFixedHeight(std::min(height, mostNotesHeight));
    notes_->setVerticalScrollBarPolicy(scrolls ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
    // Without anything to scroll the keyboard has nothing to do there.
    notes_->setFocusPolicy(scrolls ? Qt::StrongFocus : Qt::ClickFocus);
}

void UpdateView::openPage() {
    const auto* const update = std::get_if<Update>(&model_.state());
    if (update == nullptr) {
        return;
    }
    const auto address = toQString(update->page);
    if (!openPage_(QUrl(address, QUrl::StrictMode))) {
        text_->setText(QStringLiteral("The page could not be opened. Its address is ") + address);
        text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
}

}  // namespace tessellon
