#include "ui/symbols.h"

#include <QPen>
#include <QPointF>
#include <algorithm>

namespace tessellon {
namespace {

constexpr double grid = 24;

// A star of four points with hollow sides.
void addSparkle(QPainterPath& path, const QPointF& center, double radius) {
    const double waist = radius * 0.16;
    const QPointF up = center - QPointF(0, radius);
    path.moveTo(up);
    path.quadTo(center + QPointF(waist, -waist), center + QPointF(radius, 0));
    path.quadTo(center + QPointF(waist, waist), center + QPointF(0, radius));
    path.quadTo(center + QPointF(-waist, waist), center - QPointF(radius, 0));
    path.quadTo(center + QPointF(-waist, -waist), up);
    path.closeSubpath();
}

void addCross(QPainterPath& path, const QPointF& center, double radius) {
    path.moveTo(center - QPointF(0, radius));
    path.lineTo(center + QPointF(0, radius));
    path.moveTo(center - QPointF(radius, 0));
    path.lineTo(center + QPointF(radius, 0));
}

}  // namespace

QPainterPath symbolPath(Symbol symbol) {
    QPainterPath path;
    switch (symbol) {
        case Symbol::magnifyingGlass:
            path.addEllipse(QPointF(10.5, 10.5), 6.5, 6.5);
            path.moveTo(15.1, 15.1);
            path.lineTo(20, 20);
            break;
        case Symbol::sparkles:
            addSparkle(path, QPointF(9.5, 13), 8.5);
            addCross(path, QPointF(19, 5), 3);
            addCross(path, QPointF(19.5, 19.5), 2.2);
            break;
    }
    return path;
}

void drawSymbol(QPainter& painter, Symbol symbol, const QRectF& rect, const QColor& color,
                double strokeWidth) {
    const double scale = std::min(rect.width(), rect.height()) / grid;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.center());
    painter.scale(scale, scale);
    painter.translate(-grid / 2, -grid / 2);
    painter.setPen(QPen(color, strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(symbolPath(symbol));
    painter.restore();
}

}  // namespace tessellon
