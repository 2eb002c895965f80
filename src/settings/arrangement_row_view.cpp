#include "settings/arrangement_row_view.h"

#include "settings/elided_label_view.h"
#include "shortcuts/shortcut_recorder_view.h"
#include "ui/palette.h"
#include "ui/pill_button.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <algorithm>
#include <limits>

namespace tessellon {
namespace {

constexpr int padding = 12;
constexpr int spacing = 10;
constexpr int summarySpacing = 5;
constexpr int noteSpacing = 2;
constexpr double summarySize = 11.5;
constexpr double keySize = 20;
constexpr int shortcutWidth = 112;
// From the edge of the field to its text.
constexpr int nameIndent = 11;

/// Turns positions in a text into those in the text that takes its place.
class Replacement {
  public:
    Replacement(const QString& before, const QString& after)
        : before_(before.size()), after_(after.size()) {
        const auto shorter = std::min(before_, after_);
        while (sameStart_ < shorter && before[sameStart_] == after[sameStart_]) {
            ++sameStart_;
        }
        while (sameEnd_ < shorter - sameStart_ &&
               before[before_ - 1 - sameEnd_] == after[after_ - 1 - sameEnd_]) {
            ++sameEnd_;
        }
        // Two characters may have a half of their code in common.
        if (sameStart_ > 0 && before[sameStart_ - 1].isHighSurrogate()) {
            --sameStart_;
        }
        if (sameEnd_ > 0 && before[before_ - sameEnd_].isLowSurrogate()) {
            --sameEnd_;
        }
    }

    int operator()(qsizetype position) const {
        const auto moved = position <= sameStart_           ? position
                           : position >= before_ - sameEnd_ ? position + after_ - before_
                                                            : after_ - sameEnd_;
        return static_cast<int>(moved);
    }

  private:
    qsizetype before_;
    qsizetype after_;
    qsizetype sameStart_ = 0;
    qsizetype sameEnd_ = 0;
};

void nameAccessibly(QWidget& widget, const QString& name) {
    if (widget.accessibleName() != name) {
        widget.setAccessibleName(name);
    }
}

}  // namespace

ArrangementRow::ArrangementRow(ArrangementsModel& model, Recorder& recorder, const Uuid& id,
                               QWidget* parent)
    : Card({.fill = palette::paper, .horizontalPadding = padding, .verticalPadding = padding},
           parent),
      model_(model),
      shown_{id, {}, {}, {}},
      field_(new TextField({}, QStringLiteral("Name"), this)),
      summary_(new ElidedLabel({}, {.size = summarySize, .color = palette::muted}, this)),
      recorder_(new ShortcutRecorder(recorder, HotkeyTarget::arrangement(id), keySize, this)),
      apply_(new PillButton(QStringLiteral("Apply"), PillButtonStyle::quiet, PillButtonSize::small,
                            this)),
      delete_(new PillButton(QStringLiteral("Delete"), PillButtonStyle::quiet,
                             PillButtonSize::small, this)),
      texts_(new QVBoxLayout) {
    delete_->setSymbol(Symbol::trash);
    field_->setEscape(EscapeInField::leaves);
    field_->setMaxLength(std::numeric_limits<int>::max());

    // As wide while keys are recorded as before.
    auto* const shortcut = new QVBoxLayout;
    shortcut->addStrut(shortcutWidth);
    shortcut->addWidget(recorder_, 0, Qt::AlignLeading | Qt::AlignVCenter);
    auto* const line = new QHBoxLayout;
    line->setSpacing(spacing);
    line->addWidget(field_, 1);
    line->addLayout(shortcut);
    line->addWidget(apply_);
    line->addWidget(delete_);
    column().setSpacing(summarySpacing);
    column().addLayout(line);
    texts_->setContentsMargins(nameIndent, 0, 0, 0);
    texts_->setSpacing(noteSpacing);
    texts_->addWidget(summary_);
    column().addLayout(texts_);

    // Also what an input method or assistive technology writes is an edit.
    connect(field_, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text != name_) {
            name_ = text;
            model_.rename(shown_.id, text.toStdString());
        }
    });
    connect(apply_, &QAbstractButton::clicked, this, [this] { model_.apply(shown_.id); });
    connect(delete_, &QAbstractButton::pressed, this, [this] {
        deletedBy_ = QGuiApplication::mouseButtons() == Qt::NoButton ? Qt::OtherFocusReason
                                                                     : Qt::MouseFocusReason;
    });
    connect(delete_, &QAbstractButton::clicked, this, [this] { model_.remove(shown_.id); });
}

void ArrangementRow::showNote(const std::optional<std::string>& note) {
    if (note_ == nullptr && note) {
        note_ = new ElidedLabel({}, {.size = summarySize, .color = palette::coral}, this);
        texts_->addWidget(note_);
    }
    if (note_ != nullptr) {
        note_->setText(QString::fromStdString(note.value_or("")));
        note_->setVisible(note.has_value());
    }
}

std::array<QWidget*, 4> ArrangementRow::controls() const {
    return {field_, recorder_, apply_, delete_};
}

void ArrangementRow::showArrangement(std::size_t index) {
    const auto& arrangement = model_.list()[index];
    const bool isNew = field_->accessibleName().isEmpty();
    if (isNew || arrangement.placements != shown_.placements) {
        summary_->setText(QString::fromStdString(model_.summary(arrangement)));
    }
    shown_ = arrangement;
    showName(QString::fromStdString(arrangement.name));
    const auto spoken = QString::fromStdString(model_.spokenName(index));
    nameAccessibly(*field_, QStringLiteral("Name of arrangement %1").arg(index + 1));
    recorder_->setSpokenTitle(spoken);
    nameAccessibly(*apply_, QStringLiteral("Apply ") + spoken);
    nameAccessibly(*delete_, QStringLiteral("Delete ") + spoken);
}

void ArrangementRow::showName(const QString& name) {
    const auto before = field_->text();
    name_ = name;
    if (before == name) {
        return;
    }
    const Replacement moved(before, name);
    const auto caret = moved(field_->cursorPosition());
    const bool hasSelection = field_->hasSelectedText();
    // A selection is drawn from its fixed end to the caret.
    const auto fixedEnd =
        moved(field_->selectionStart() == field_->cursorPosition() ? field_->selectionEnd()
                                                                   : field_->selectionStart());
    field_->setText(name);
    if (!field_->hasFocus()) {
        field_->setCursorPosition(0);  // names that are too long are read from their beginning
    } else if (hasSelection) {
        field_->setSelection(fixedEnd, caret - fixedEnd);
    } else {
        field_->setCursorPosition(caret);
    }
}

}  // namespace tessellon
