#include "ui/row.h"

#include "ui/focus_ring.h"
#include "ui/palette.h"
#include "ui/text_label.h"

#include <QEvent>
#include <QHBoxLayout>

namespace tessellon {
namespace {

constexpr double titleSize = 14;
constexpr double subtitleSize = 12;
constexpr int textSpacing = 2;
constexpr int trailingSpacing = 16;

}  // namespace

Row::Row(const QString& title, const QString& subtitle, QWidget* trailing, QWidget* parent)
    : QWidget(parent), texts_(new QVBoxLayout), trailing_(trailing) {
    auto* const line = new QHBoxLayout(this);
    line->setContentsMargins(FocusRing::reach, 0, FocusRing::reach, 0);
    line->setSpacing(trailingSpacing);
    line->addLayout(texts_, 1);
    texts_->setSpacing(textSpacing);
    texts_->addStretch();
    texts_->addWidget(
        new TextLabel(title, titleSize, QFont::DemiBold, palette::ink, TextWrap::words, this));
    texts_->addStretch();
    if (trailing != nullptr) {
        line->addWidget(trailing, 0, Qt::AlignVCenter);
        setMinimumHeight(trailing->sizeHint().height() + 2 * FocusRing::reach);
    }
    if (!subtitle.isEmpty()) {
        setSubtitle(subtitle);
    }
}

void Row::setSubtitle(const QString& subtitle) {
    if (subtitle_ == nullptr) {
        subtitle_ = new TextLabel(subtitle, subtitleSize, QFont::Medium, palette::muted,
                                  TextWrap::words, this);
        texts_->insertWidget(2, subtitle_);
    }
    subtitle_->setText(subtitle);
    if (trailing_ != nullptr && trailing_->focusPolicy() != Qt::NoFocus) {
        trailing_->setAccessibleDescription(subtitle);
    }
}

QString Row::subtitle() const {
    return subtitle_ != nullptr ? subtitle_->text() : QString();
}

void Row::addBeside(QWidget* control) {
    auto* const line = static_cast<QHBoxLayout*>(layout());
    line->insertWidget(line->indexOf(trailing_), control, 0, Qt::AlignVCenter);
    QWidget::setTabOrder(control, trailing_);
}

void Row::addBelow(QWidget* widget) {
    if (below_ == nullptr) {
        below_ = new QVBoxLayout;
        below_->setContentsMargins(0, 0, 0, 0);
        below_->setSpacing(FocusRing::reach);
        texts_->insertLayout(texts_->count() - 1, below_);
    }
    // Controls keep their width, texts fill the line.
    const bool isControl = widget->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed;
    below_->addWidget(widget, 0, isControl ? Qt::AlignLeading | Qt::AlignVCenter : Qt::Alignment());
}

bool Row::event(QEvent* event) {
    if (event->type() == QEvent::LayoutRequest && below_ != nullptr) {
        // The room around what is below goes with it: a layout of hidden widgets would keep it.
        below_->setContentsMargins(
            below_->isEmpty() ? QMargins() : QMargins(0, textSpacing, 0, FocusRing::reach));
    }
    return QWidget::event(event);
}

}  // namespace tessellon
