#include "ui/symbols.h"

#include "ui/symbol_shapes.h"

#include <QPainterPathStroker>
#include <QPen>
#include <QPointF>
#include <algorithm>

namespace tessellon {
namespace {

using namespace symbol_shapes;

constexpr double grid = 24;
constexpr QPointF middle(grid / 2, grid / 2);

void addSliders(QPainterPath& path) {
    struct Slider {
        double y;
        double knob;
    };
    for (const auto& [y, knob] : {Slider{5.5, 15}, Slider{12, 8}, Slider{18.5, 15}}) {
        constexpr double radius = 2.3;
        addLine(path, QPointF(3, y), QPointF(knob - radius, y));
        addLine(path, QPointF(knob + radius, y), QPointF(21, y));
        path.addEllipse(QPointF(knob, y), radius, radius);
    }
}

void addSquareWithArrow(QPainterPath& path) {
    path.moveTo(11, 5);
    path.lineTo(6, 5);
    path.quadTo(QPointF(4, 5), QPointF(4, 7));
    path.lineTo(4, 18);
    path.quadTo(QPointF(4, 20), QPointF(6, 20));
    path.lineTo(17, 20);
    path.quadTo(QPointF(19, 20), QPointF(19, 18));
    path.lineTo(19, 13);
    addLine(path, QPointF(11, 13), QPointF(20.5, 3.5));
    path.moveTo(15, 3.5);
    path.lineTo(20.5, 3.5);
    path.lineTo(20.5, 9);
}

// The mark is cut out of the disc, and the stroke around both narrows it to a stroke's width.
void addCheckedDisc(QPainterPath& path) {
    QPainterPath mark;
    addCheckmark(mark, middle + QPointF(0, 0.1), 0.62);
    QPainterPathStroker cut;
    cut.setWidth(2 * symbolStroke);
    cut.setCapStyle(Qt::RoundCap);
    cut.setJoinStyle(Qt::RoundJoin);
    QPainterPath disc;
    disc.addEllipse(middle, 9.5, 9.5);
    path.addPath(disc.subtracted(cut.createStroke(mark)));
}

void addWaves(QPainterPath& path) {
    const QPointF source(12, 18.6);
    addDot(path, source);
    for (const double radius : {5.0, 9.5, 14.0}) {
        addArc(path, source, radius, 45, 90);
    }
}

void addBattery(QPainterPath& path) {
    addBox(path, QRectF(1.5, 6.5, 18, 11), 3);
    addLine(path, QPointF(22.5, 10.8), QPointF(22.5, 13.2));
    // The charge, which the strokes fill.
    addBox(path, QRectF(5.5, 10.5, 7.5, 3), 0.2);
    addLine(path, QPointF(6, 12), QPointF(12.5, 12));
}

bool isSolid(Symbol symbol) {
    return symbol == Symbol::pauseFill || symbol == Symbol::pawprintFill ||
           symbol == Symbol::checkmarkCircleFill;
}

}  // namespace

QPainterPath symbolPath(Symbol symbol) {
    QPainterPath path;
    switch (symbol) {
        case Symbol::magnifyingGlass:
            path.addEllipse(QPointF(10.5, 10.5), 6.5, 6.5);
            addLine(path, QPointF(15.1, 15.1), QPointF(20, 20));
            break;
        case Symbol::sparkles:
            addSparkle(path, QPointF(9.5, 13), 8.5);
            addCross(path, QPointF(19, 5), 3);
            addCross(path, QPointF(19.5, 19.5), 2.2);
            break;
        case Symbol::plus:
            addCross(path, middle, 7);
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
            addLine(path, QPointF(4.5, 20), QPointF(19.5, 4));
            break;
        case Symbol::squareGrid2x2:
            for (const double x : {4.0, 14.0}) {
                addBox(path, QRectF(x, 4, 6, 6));
                addBox(path, QRectF(x, 14, 6, 6));
            }
            break;
        case Symbol::sliderHorizontal3:
            addSliders(path);
            break;
        case Symbol::keyboard:
            addKeyboard(path);
            break;
        case Symbol::line3HorizontalDecrease:
            addLine(path, QPointF(3.5, 6.5), QPointF(20.5, 6.5));
            addLine(path, QPointF(6.5, 12), QPointF(17.5, 12));
            addLine(path, QPointF(9.5, 17.5), QPointF(14.5, 17.5));
            break;
        case Symbol::display2:
            addDisplays(path);
            break;
        case Symbol::pawprint:
        case Symbol::pawprintFill:
            addPaw(path);
            break;
        case Symbol::xmark:
            addLine(path, QPointF(6, 6), QPointF(18, 18));
            addLine(path, QPointF(18, 6), QPointF(6, 18));
            break;
        case Symbol::eye:
            addEye(path);
            break;
        case Symbol::arrowCounterclockwise:
            addRoundArrow(path, QPointF(12, 12.5), 8, 190, 315, 5.5);
            break;
        case Symbol::trash:
            addTrashCan(path);
            break;
        case Symbol::arrowTriangle2Circlepath:
            addRoundArrow(path, middle, 8, 170, -145, 5);
            addRoundArrow(path, middle, 8, 350, -145, 5);
            break;
        case Symbol::handWave:
            addWavingHand(path);
            break;
        case Symbol::handRaised:
            addRaisedHand(path);
            break;
        case Symbol::heart:
            addHeart(path);
            break;
        case Symbol::arrowUpForwardSquare:
            addSquareWithArrow(path);
            break;
        case Symbol::checkmark:
            addCheckmark(path, middle, 1);
            break;
        case Symbol::checkmarkCircleFill:
            addCheckedDisc(path);
            break;
        case Symbol::arrowLeft:
            addArrow(path, QPointF(20, 12), QPointF(4, 12), 8.5);
            break;
        case Symbol::arrowRight:
            addArrow(path, QPointF(4, 12), QPointF(20, 12), 8.5);
            break;
        case Symbol::arrowUpRight:
            addArrow(path, QPointF(5.5, 18.5), QPointF(18.5, 5.5), 9.5);
            break;
        case Symbol::wifi:
            addWaves(path);
            break;
        case Symbol::battery75:
            addBattery(path);
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
