// The mark of the status item: the program's tiles in one color, with a pulse in the tall one.
#pragma once

#include "platform/tray_icon.h"

#include <QColor>
#include <QPainter>
#include <QRectF>

namespace tessellon {

/// Draws the mark as large as fits into the middle of `rect`.
void paintStatusGlyph(QPainter& painter, const QRectF& rect, const QColor& color);

/// The mark as a picture of its own; empty when `size` is not a number from 1 to 1024. In its own
/// size of 18 and multiples of that it keeps its measures, in others its edges are moved to whole
/// pixels. An IconPainter.
IconImage statusGlyphImage(int size, IconColor color);

}  // namespace tessellon
