// Dims a picture as a whole, where dimming its parts would let them shine through one another.
#pragma once

#include <QPainter>
#include <QSize>
#include <functional>

namespace tessellon {

/// Calls `draw` with a painter whose picture, of `size` logical pixels at the origin, then appears
/// at `opacity` (0…1). At full opacity `draw` gets `painter` itself.
void paintLayer(QPainter& painter, const QSize& size, double opacity,
                const std::function<void(QPainter&)>& draw);

}  // namespace tessellon
