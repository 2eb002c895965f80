#include "ui/card.h"

#include "ui/control_style.h"
#include "ui/palette.h"

#include <QPainter>

namespace tessellon {

CardStyle rowsCardStyle() {
    return {.fill = palette::paper,
            .horizontalPadding = 12,
            .verticalPadding = 12,
            .border = {palette::line, control_style::outline}};
}

Card::Card(const CardStyle& style, QWidget* parent)
    : QWidget(parent), style_(style), column_(new QVBoxLayout(this)) {
    column_->setContentsMargins(style.horizontalPadding, style.verticalPadding,
                                style.horizontalPadding, style.verticalPadding);
}

void Card::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintRoundedRect(painter, rect(), style_.radius, style_.fill, style_.border);
}

}  // namespace tessellon
