#include "settings/application_chooser_view.h"

#include "settings/choosable_list_view.h"
#include "ui/card.h"
#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/palette.h"
#include "ui/pill_button.h"
#include "ui/symbol_label.h"
#include "ui/text_field.h"
#include "ui/text_label.h"
#include "ui/widget_colors.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QVBoxLayout>

namespace tessellon {
namespace {

constexpr QSize usualSize{460, 560};
constexpr QSize leastSize{340, 300};
constexpr int margin = 18;
constexpr int blockSpacing = 12;
constexpr int partSpacing = 10;
constexpr int lensSize = 18;
constexpr double textSize = 13;
constexpr double countSize = 12;
constexpr int cardPadding = 4;

}  // namespace

ApplicationChooser::ApplicationChooser(const std::vector<ChoosableApplication>& applications,
                                       QWidget* owner)
    : QDialog(owner) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(QStringLiteral("Choose applications"));
    setWindowColors(*this);
    // It opens in the middle of its owner, which fits on the screen.
    const auto size = usualSize.boundedTo(owner->size());
    setMinimumSize(leastSize.boundedTo(size));
    resize(size);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(blockSpacing);
    column->addWidget(makeSearch());
    auto* const card = new Card({.fill = palette::paper,
                                 .horizontalPadding = cardPadding,
                                 .verticalPadding = cardPadding,
                                 .border = {palette::ink, control_style::outline}},
                                this);
    column->addWidget(card, 1);
    list_ = new ChoosableList(applications, card);
    card->column().addWidget(list_, 1);
    nothing_ =
        new TextLabel(QString(), textSize, QFont::Medium, palette::muted, TextWrap::words, card);
    nothing_->setAlignment(Qt::AlignCenter);
    card->column().addWidget(nothing_, 1);
    column->addWidget(makeButtons());
    choiceToken_ = list_->choiceChanged().subscribe([this] { showChoice(); });
    filter(QString());
    showChoice();
    field_->setFocus();
}

QWidget* ApplicationChooser::makeSearch() {
    auto* const row = new QWidget(this);
    auto* const line = new QHBoxLayout(row);
    line->setContentsMargins(FocusRing::reach, FocusRing::reach, FocusRing::reach,
                             FocusRing::reach);
    line->setSpacing(partSpacing);
    line->addWidget(
        new SymbolLabel(Symbol::magnifyingGlass, lensSize, palette::muted, symbolStroke, row));
    field_ = new TextField(QStringLiteral("Search applications"),
                           QStringLiteral("Search applications…"), row);
    field_->installEventFilter(this);
    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) { filter(text); });
    line->addWidget(field_, 1);
    return row;
}

QWidget* ApplicationChooser::makeButtons() {
    auto* const row = new QWidget(this);
    auto* const line = new QHBoxLayout(row);
    line->setContentsMargins(FocusRing::reach, FocusRing::reach, FocusRing::reach,
                             FocusRing::reach);
    line->setSpacing(partSpacing);
    count_ =
        new TextLabel(QString(), countSize, QFont::Medium, palette::muted, TextWrap::none, row);
    line->addWidget(count_);
    line->addStretch();
    auto* const cancel = new PillButton(QStringLiteral("Cancel"), PillButtonStyle::quiet, row);
    connect(cancel, &QAbstractButton::clicked, this, &QDialog::reject);
    line->addWidget(cancel);
    add_ = new PillButton(QStringLiteral("Add"), PillButtonStyle::primary, row);
    connect(add_, &QAbstractButton::clicked, this, [this] { confirm(); });
    line->addWidget(add_);
    return row;
}

void ApplicationChooser::filter(const QString& text) {
    const auto wanted = text.trimmed();
    list_->setFilter(wanted);
    const bool isEmpty = list_->lineCount() == 0;
    nothing_->setText(wanted.isEmpty() ? QStringLiteral("No applications are installed.")
                                       : QStringLiteral("No application matches."));
    nothing_->setVisible(isEmpty);
    list_->setVisible(!isEmpty);
}

void ApplicationChooser::showChoice() {
    const auto count = list_->chosen().size();
    add_->setEnabled(count > 0);
    count_->setText(count == 0 ? QString() : QStringLiteral("%1 chosen").arg(count));
}

void ApplicationChooser::confirm() {
    const auto identifiers = list_->chosen();
    if (identifiers.empty()) {
        return;
    }
    accept();
    chosen_.emit(identifiers);
}

/// From the field one goes down into the list without leaving what was typed.
bool ApplicationChooser::eventFilter(QObject* watched, QEvent* event) {
    if (watched == field_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Down && list_->isVisible()) {
        list_->setFocus(Qt::TabFocusReason);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void ApplicationChooser::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) {
        QDialog::keyPressEvent(event);
        return;
    }
    // With nothing chosen the line is meant that the keyboard is at, or that the search led to.
    const bool isAtLine = list_->hasFocus() || !field_->text().trimmed().isEmpty();
    if (list_->chosen().empty() && isAtLine) {
        list_->chooseCurrent();
    }
    confirm();
}

}  // namespace tessellon
