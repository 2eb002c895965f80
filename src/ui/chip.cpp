#include "ui/chip.h"

#include "ui/control_style.h"
#include "ui/fonts.h"
#include "ui/layer.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <cmath>

namespace tessellon {
namespace {

constexpr double fillOpacity = 0.18;
constexpr double sidePadding = 9;
constexpr double verticalPadding = 3;
constexpr double dotSize = 7;
constexpr double spacing = 5;
constexpr double fontSize = 11;

QFont chipFont() {
    return interfaceFont(fontSize, QFont::DemiBold);
}

}  // namespace

QSizeF chipSize(const QString& text, ChipDot dot) {
    const QFont font = chipFont();
    const double dotRoom = dot == ChipDot::leading ? dotSize + spacing : 0;
    return {2 * sidePadding + dotRoom + textWidth(font, text),
            2 * verticalPadding + std::ceil(lineHeight(font))};
}

void paintChip(QPainter& painter, const QPointF& topLeft, const QString& text, const QColor& color,
               ChipDot dot, Qt::LayoutDirection direction) {
    const QRectF rect(topLeft, chipSize(text, dot));
    painter.save();
    paintCapsule(painter, rect, palette::withOpacity(color, fillOpacity),
                 {palette::ink, control_style::thinOutline});
    QRectF content = rect.adjusted(sidePadding, 0, -sidePadding, 0);
    if (dot == ChipDot::leading) {
        const bool leftToRight = direction == Qt::LeftToRight;
        const double left = leftToRight ? content.left() : content.right() - dotSize;
        paintCapsule(painter, QRectF(left, rect.center().y() - dotSize / 2, dotSize, dotSize),
                     color);
        const double taken = dotSize + spacing;
        content.adjust(leftToRight ? taken : 0, 0, leftToRight ? 0 : -taken, 0);
    }
    painter.setFont(chipFont());
    painter.setPen(palette::ink);
    drawLine(painter, content, text);
    painter.restore();
}

Chip::Chip(const QString& text, const QColor& color, ChipDot dot, QWidget* parent)
    : QLabel(parent), color_(color), dot_(dot) {
    setTextFormat(Qt::PlainText);
    setText(text);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Chip::setColor(const QColor& color) {
    color_ = color;
    update();
}

QSize Chip::sizeHint() const {
    const QSizeF exact = chipSize(text(), dot_);
    return {static_cast<int>(std::ceil(exact.width())),
            static_cast<int>(std::ceil(exact.height()))};
}

void Chip::paintEvent(QPaintEvent* /*event*/) {
    QPainter widgetPainter(this);
    const double opacity = isEnabled() ? 1 : control_style::disabledOpacity;
    paintLayer(widgetPainter, size(), opacity, [this](QPainter& painter) {
        paintChip(painter, QPointF(0, 0), text(), color_, dot_, layoutDirection());
    });
}

}  // namespace tessellon
