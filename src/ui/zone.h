// How a zone that windows can be dropped on looks, in the grid and in pictures of it.
#pragma once

#include <QPainter>
#include <QRectF>
#include <QSizeF>

namespace tessellon {

/// Draws the ground of a zone. `activity` says how far it has become the active one: 0 not at all,
/// 1 wholly.
void paintZone(QPainter& painter, const QRectF& zone, double cornerRadius, double activity);

/// The same for a large zone that lies on nothing, with its edges on whole pixels: much faster.
void setZone(QPainter& painter, const QRectF& zone, double cornerRadius, double activity);

/// What stands in the middle of a zone: a small picture of the action above its name.
namespace zone_label {
inline constexpr QSizeF pictureSize{26, 17};
inline constexpr double spacing = 3;
inline constexpr double nameSize = 10.5;
inline constexpr double smallestNameScale = 0.7;
}  // namespace zone_label

}  // namespace tessellon
