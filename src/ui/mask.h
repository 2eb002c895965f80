// Masks in the shapes that cards and caps have, for panels that have to do without translucency.
#pragma once

#include "ui/shapes.h"

#include <QColor>
#include <QPainter>
#include <QRect>
#include <QRegion>

namespace tessellon {

/// The whole pixels of continuousRoundedRect() with the same arguments: those that it covers by
/// half at least.
QRegion roundedMask(const QRect& rect, double radius);

/// The band of that shape that is `width` pixels wide everywhere and ends at the shape's edge; the
/// whole shape when no room is left inside.
QRegion ringMask(const QRect& rect, double radius, int width);

/// A line along the shape's edge, and the colour between it and the ring's inner edge.
struct RingColors {
    Border line;
    QColor inner;
};

/// Draws what ringMask() with the same arguments leaves to see: opaque in all of its pixels.
void paintRing(QPainter& painter, const QRect& rect, double radius, int width,
               const RingColors& colors);

}  // namespace tessellon
