#include "ui/symbol_shapes.h"

#include <QTransform>
#include <cmath>
#include <numbers>

namespace tessellon::symbol_shapes {
namespace {

// How far the strokes of an arrow's head open from its shaft, in degrees.
constexpr double headOpening = 42;

QPointF atAngle(double degrees, double length) {
    const double radians = degrees * std::numbers::pi / 180;
    return {std::cos(radians) * length, -std::sin(radians) * length};
}

// A finger that points up: up one side from `bottom`, round the tip, down the other side.
void addFinger(QPainterPath& path, double left, double width, double top, double leftBottom,
               double rightBottom) {
    const double radius = width / 2;
    path.moveTo(left, leftBottom);
    path.lineTo(left, top + radius);
    path.arcTo(QRectF(left, top, width, width), 180, -180);
    path.lineTo(left + width, rightBottom);
}

void addToe(QPainterPath& path, const QPointF& center, double across, double along, double turn) {
    QPainterPath toe;
    toe.addEllipse(QPointF(0, 0), across, along);
    path.addPath(QTransform().translate(center.x(), center.y()).rotate(turn).map(toe));
}

}  // namespace

void addLine(QPainterPath& path, const QPointF& from, const QPointF& to) {
    path.moveTo(from);
    path.lineTo(to);
}

void addDot(QPainterPath& path, const QPointF& center) {
    // A line without any length is not drawn.
    addLine(path, center, center + QPointF(0.01, 0));
}

void addBox(QPainterPath& path, const QRectF& box, double radius) {
    path.addRoundedRect(box, radius, radius);
}

void addCross(QPainterPath& path, const QPointF& center, double radius) {
    addLine(path, center - QPointF(0, radius), center + QPointF(0, radius));
    addLine(path, center - QPointF(radius, 0), center + QPointF(radius, 0));
}

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

void addArrowHead(QPainterPath& path, const QPointF& tip, double direction, double length) {
    path.moveTo(tip + atAngle(direction + 180 - headOpening, length));
    path.lineTo(tip);
    path.lineTo(tip + atAngle(direction + 180 + headOpening, length));
}

void addArrow(QPainterPath& path, const QPointF& from, const QPointF& tip, double headLength) {
    addLine(path, from, tip);
    const QPointF along = tip - from;
    const double direction = std::atan2(-along.y(), along.x()) * 180 / std::numbers::pi;
    addArrowHead(path, tip, direction, headLength);
}

void addArc(QPainterPath& path, const QPointF& center, double radius, double start, double sweep) {
    const QRectF box(center - QPointF(radius, radius), center + QPointF(radius, radius));
    path.arcMoveTo(box, start);
    path.arcTo(box, start, sweep);
}

void addRoundArrow(QPainterPath& path, const QPointF& center, double radius, double start,
                   double sweep, double headLength) {
    addArc(path, center, radius, start, sweep);
    const double end = start + sweep;
    // A head along the tangent alone would seem to point outwards, since the shaft bends behind it.
    const double bend = 14;
    const double direction = sweep > 0 ? end + 90 - bend : end - 90 + bend;
    addArrowHead(path, center + atAngle(end, radius), direction, headLength);
}

void addCheckmark(QPainterPath& path, const QPointF& center, double scale) {
    path.moveTo(center + QPointF(-7.5, 0.8) * scale);
    path.lineTo(center + QPointF(-2.5, 5.8) * scale);
    path.lineTo(center + QPointF(7.5, -5.8) * scale);
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

void addPaw(QPainterPath& path) {
    addToe(path, QPointF(4.4, 10.9), 1.9, 2.5, -24);
    addToe(path, QPointF(9, 5.4), 1.9, 2.7, -8);
    addToe(path, QPointF(15, 5.4), 1.9, 2.7, 8);
    addToe(path, QPointF(19.6, 10.9), 1.9, 2.5, 24);
    // The pad: a rounded top, two lobes below.
    path.moveTo(12, 11.6);
    path.cubicTo(QPointF(15.2, 11.6), QPointF(18, 15.2), QPointF(18, 18));
    path.cubicTo(QPointF(18, 21.4), QPointF(14.8, 21.2), QPointF(12, 20));
    path.cubicTo(QPointF(9.2, 21.2), QPointF(6, 21.4), QPointF(6, 18));
    path.cubicTo(QPointF(6, 15.2), QPointF(8.8, 11.6), QPointF(12, 11.6));
    path.closeSubpath();
}

void addHeart(QPainterPath& path) {
    path.moveTo(12, 20.2);
    path.cubicTo(QPointF(7, 16.4), QPointF(3, 13), QPointF(3, 8.9));
    path.cubicTo(QPointF(3, 3.6), QPointF(9.6, 2.2), QPointF(12, 7));
    path.cubicTo(QPointF(14.4, 2.2), QPointF(21, 3.6), QPointF(21, 8.9));
    path.cubicTo(QPointF(21, 13), QPointF(17, 16.4), QPointF(12, 20.2));
    path.closeSubpath();
}

void addRaisedHand(QPainterPath& path) {
    constexpr double width = 3.5;
    constexpr double index = 7.4;
    addFinger(path, index, width, 3.4, 13.9, 11);
    addFinger(path, index + width, width, 1.8, 11, 11);
    addFinger(path, index + 2 * width, width, 2.8, 11, 11);
    addFinger(path, index + 3 * width, width, 5.8, 11, 14);
    // On from the little finger: the palm and the thumb.
    path.cubicTo(QPointF(21.4, 19), QPointF(18.4, 22), QPointF(14, 22));
    path.cubicTo(QPointF(10.4, 22), QPointF(8.6, 20.9), QPointF(6.6, 18.4));
    path.lineTo(2.5, 13.4);
    path.cubicTo(QPointF(1, 11.6), QPointF(3.7, 9.4), QPointF(5.2, 11.2));
    path.lineTo(index, 13.9);
}

void addWavingHand(QPainterPath& path) {
    constexpr double width = 3.7;
    constexpr double index = -3.6;
    QPainterPath hand;
    addFinger(hand, index, width, -8.6, 1.6, -1);
    addFinger(hand, index + width, width, -9.6, -1, -1);
    addFinger(hand, index + 2 * width, width, -7.6, -1, 2.5);
    hand.cubicTo(QPointF(7.5, 6.8), QPointF(5.4, 9), QPointF(1.8, 9));
    hand.cubicTo(QPointF(-1.4, 9), QPointF(-2.7, 8.2), QPointF(-4.4, 6.1));
    hand.lineTo(-8.4, 1.2);
    hand.cubicTo(QPointF(-9.9, -0.6), QPointF(-7.2, -2.8), QPointF(-5.7, -1));
    hand.lineTo(index, 1.6);
    path.addPath(QTransform().translate(11.9, 12.2).rotate(22).scale(0.88, 0.88).map(hand));
    addArc(path, QPointF(12.6, 12.6), 11.4, 122, 30);
    addArc(path, QPointF(11, 11.6), 11.4, -60, 30);
}

void addTrashCan(QPainterPath& path) {
    addLine(path, QPointF(4, 6.5), QPointF(20, 6.5));
    path.moveTo(8.8, 6.5);
    path.lineTo(9.4, 3.5);
    path.lineTo(14.6, 3.5);
    path.lineTo(15.2, 6.5);
    path.moveTo(6, 6.5);
    path.lineTo(6.8, 19.2);
    path.quadTo(QPointF(6.9, 21), QPointF(8.7, 21));
    path.lineTo(15.3, 21);
    path.quadTo(QPointF(17.1, 21), QPointF(17.2, 19.2));
    path.lineTo(18, 6.5);
    addLine(path, QPointF(10.2, 11), QPointF(10.4, 16.8));
    addLine(path, QPointF(13.8, 11), QPointF(13.6, 16.8));
}

void addKeyboard(QPainterPath& path) {
    addBox(path, QRectF(2, 5, 20, 14), 2.5);
    for (const double x : {6.2, 10.1, 13.9, 17.8}) {
        addDot(path, QPointF(x, 9.5));
    }
    addDot(path, QPointF(6.2, 14.5));
    addLine(path, QPointF(10.1, 14.5), QPointF(13.9, 14.5));
    addDot(path, QPointF(17.8, 14.5));
}

void addDisplays(QPainterPath& path) {
    addBox(path, QRectF(2, 8, 13, 9));
    addLine(path, QPointF(8.5, 17), QPointF(8.5, 20.5));
    addLine(path, QPointF(5.5, 20.5), QPointF(11.5, 20.5));
    // The other one looks out from behind the first.
    path.moveTo(7, 4.5);
    path.quadTo(QPointF(7, 3.5), QPointF(8.5, 3.5));
    path.lineTo(20.5, 3.5);
    path.quadTo(QPointF(22, 3.5), QPointF(22, 5));
    path.lineTo(22, 11.5);
    path.quadTo(QPointF(22, 13), QPointF(20.5, 13));
    path.lineTo(19, 13);
    path.moveTo(19, 13);
}

}  // namespace tessellon::symbol_shapes
