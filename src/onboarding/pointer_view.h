// The pointer of the mouse in the tour's pictures.
#pragma once

#include <QPainter>
#include <QPointF>

namespace tessellon {

/// Draws an arrow whose tip is at `tip`; `height` is in logical pixels.
void paintPointer(QPainter& painter, const QPointF& tip, double height);

}  // namespace tessellon
