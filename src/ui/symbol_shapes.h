// The outlines from which the symbols are put together, on their grid of 24 × 24 units.
#pragma once

#include <QPainterPath>
#include <QPointF>
#include <QRectF>

namespace tessellon::symbol_shapes {

void addLine(QPainterPath& path, const QPointF& from, const QPointF& to);

/// A round spot as wide as the stroke.
void addDot(QPainterPath& path, const QPointF& center);

void addBox(QPainterPath& path, const QRectF& box, double radius = 1.5);

/// An upright cross whose arms are `radius` long.
void addCross(QPainterPath& path, const QPointF& center, double radius);

/// A star of four points with hollow sides.
void addSparkle(QPainterPath& path, const QPointF& center, double radius);

/// The two strokes of an arrow's head. `direction` is where it points, in degrees from the right,
/// counted against the clock.
void addArrowHead(QPainterPath& path, const QPointF& tip, double direction, double length);

/// A straight arrow.
void addArrow(QPainterPath& path, const QPointF& from, const QPointF& tip, double headLength);

/// A part of a circle; angles as in addArrowHead(), `sweep` may be negative.
void addArc(QPainterPath& path, const QPointF& center, double radius, double start, double sweep);

/// The same with an arrow's head at its end.
void addRoundArrow(QPainterPath& path, const QPointF& center, double radius, double start,
                   double sweep, double headLength);

void addCheckmark(QPainterPath& path, const QPointF& center, double scale);
void addEye(QPainterPath& path);
void addPaw(QPainterPath& path);
void addHeart(QPainterPath& path);
void addRaisedHand(QPainterPath& path);
void addWavingHand(QPainterPath& path);
void addTrashCan(QPainterPath& path);
void addKeyboard(QPainterPath& path);
void addDisplays(QPainterPath& path);

}  // namespace tessellon::symbol_shapes
