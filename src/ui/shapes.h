// The outlines that cards, caps and knobs share, and a border that stays within the edge.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>

namespace tessellon {

/// How far from its corner a continuous corner reaches along the edges, for a radius of 1.
inline constexpr double continuousCornerReach = 1.5;

/// A rounded rectangle whose corners bend gradually: they leave the straight edge before an arc of
/// `radius` would and meet that arc on the diagonal. Where an edge is too short for that the corner
/// nears the plain arc; the radius is at most half the shorter side.
QPainterPath continuousRoundedRect(const QRectF& rect, double radius);

/// A rectangle whose shorter ends are half circles.
QPainterPath capsule(const QRectF& rect);

/// A line that is drawn wholly inside the edge of its shape; none when the width is 0.
struct Border {
    QColor color;
    double width = 0;
};

/// Fills the shape and draws its border inside the edge; an invalid colour fills nothing. The
/// painter's pen and brush are kept, antialiasing is on meanwhile.
void paintRoundedRect(QPainter& painter, const QRectF& rect, double radius, const QColor& fill,
                      const Border& border = {});
void paintCapsule(QPainter& painter, const QRectF& rect, const QColor& fill,
                  const Border& border = {});

/// The border alone.
void strokeBorder(QPainter& painter, const QRectF& rect, double radius, const Border& border);
void strokeCapsuleBorder(QPainter& painter, const QRectF& rect, const Border& border);

/// Fills a rounded rectangle and draws its border over the fill, on nothing: what lies below is not
/// blended in but must have been cleared. Its edges are on whole device pixels. Much faster than
/// the general way where the shape is large, since every pixel but those of the corners is only
/// set.
void setRoundedRect(QPainter& painter, const QRectF& rect, double radius, const QColor& fill,
                    const Border& border);

}  // namespace tessellon
