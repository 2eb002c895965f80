// Masks with rounded corners, for panels that have to do without translucency.
#pragma once

#include <QRect>
#include <QRegion>

namespace tessellon {

/// The whole pixels of a rectangle whose corners are quarter circles: those whose centre is inside.
/// The radius is at most half the shorter side; one that is not positive leaves the corners square.
QRegion roundedRegion(const QRect& rect, double radius);

}  // namespace tessellon
