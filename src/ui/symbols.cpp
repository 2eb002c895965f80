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

void addBox(QPainterPath& path, const QRectF& box) {
    constexpr double radius = 1.5;
    path.addRoundedRect(box, radius, radius);
}

void addEye(QPainterPath& path) {
    const QPointF left(2.5, 12);
    const QPointF right(21.5, 12);
    path.moveTo(left);
    path.cubicTo(QPointF(6.5, 3.8), QPointF(17.5, 3.8), right);
    path.cubicTo(QPointF(17.5, 20.2), QPointF(6.5, 20.2), left);
    path.closeSubpath();
    path.addEllipse(QPointF(12, 12), 2.8, 2.8);
}

bool isSolid(Symbol symbol) {
    return symbol == Symbol::pauseFill;
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
        case Symbol::plus:
            addCross(path, QPointF(12, 12), 7);
            break;
        case Symbol::rectangle3Group:
            addBox(path, QRectF(3, 4, 8, 16));
            addBox(path, QRectF(15, 4, 6, 6));
            addBox(path, QRectF(15, 14, 6, 6));
            break;
        case Symbol::pauseFill:
            addBox(path, QRectF(5.5, 5, 4, 14));
            addBox(path, QRectF(14.5, 5, 4, 14));
            break;
        case Symbol::eyeSlash:
            addEye(path);
            path.moveTo(4.5, 20);
            path.lineTo(19.5, 4);
            break;
        case Symbol::squareGrid2x2:
            for (const double x : {4.0, 14.0}) {
                addBox(path, QRectF(x, 4, 6, 6));
                addBox(path, QRectF(x, 14, 6, 6));
            }
            break;
        default:
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
    painter.setBrush(isSolid(symbol) ? QBrush(color) : QBrush(Qt::NoBrush));
    painter.drawPath(symbolPath(symbol));
    painter.restore();
}

}  // namespace tessellon
