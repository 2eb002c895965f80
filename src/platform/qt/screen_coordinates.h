// The one place where the desktop's coordinates and the toolkit's meet. Ours are device pixels with
// the origin at the bottom left of the primary display, y up. Qt's have y down, and on a screen
// with a scale factor they keep the screen's origin in device pixels and shrink everything from
// there.
#pragma once

#include "base/geometry.h"

#include <QRect>
#include <span>
#include <vector>

namespace tessellon {

/// A screen as Qt has it.
struct QtScreenGeometry {
    QRect geometry;
    /// Device pixels for one of Qt's.
    double ratio = 1;
};

/// The screens as they are now, the primary one first.
std::vector<QtScreenGeometry> qtScreens();

/// A frame in screen coordinates as Qt has it, rounded to whole pixels of Qt's. The screen that
/// holds its centre counts, else the nearest one.
QRect toQtGeometry(const Rect& frame, std::span<const QtScreenGeometry> screens);

/// The inverse.
Rect fromQtGeometry(const QRect& geometry, std::span<const QtScreenGeometry> screens);

}  // namespace tessellon
