#include "settings/section_title_view.h"

#include "ui/chip.h"
#include "ui/dot.h"
#include "ui/focus_ring.h"
#include "ui/palette.h"
#include "ui/text_label.h"

#include <QHBoxLayout>

namespace tessellon {
namespace {

constexpr double titleSize = 16;
constexpr int spacing = 8;
constexpr int dotSize = 10;
// The heading stands closer to what it is the heading of.
constexpr int above = 6;

}  // namespace

SectionTitle::SectionTitle(const QString& title, QWidget* parent)
    : QWidget(parent), line_(new QHBoxLayout(this)) {
    line_->setContentsMargins(FocusRing::reach, above, FocusRing::reach, 0);
    line_->setSpacing(spacing);
    line_->addWidget(
        new TextLabel(title, titleSize, QFont::Bold, palette::ink, TextWrap::none, this));
    line_->addStretch();
}

void SectionTitle::setChip(const QString& text, const QColor& color) {
    if (chip_ == nullptr) {
        chip_ = new Chip(text, color, ChipDot::none, this);
        line_->insertWidget(1, chip_);
        return;
    }
    chip_->setText(text);
    chip_->setColor(color);
}

void SectionTitle::setDot(const QColor& color) {
    if (dot_ == nullptr) {
        dot_ = new Dot(dotSize, color, this);
        line_->insertWidget(line_->count() - 1, dot_);
        return;
    }
    dot_->setColor(color);
}

}  // namespace tessellon
