// Line drawings that take any colour and size.
#pragma once

#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QRectF>
#include <cstdint>

namespace tessellon {

enum class Symbol : std::uint8_t {
    magnifyingGlass,
    sparkles,
    plus,
    /// Three rectangles side by side: a layout of windows.
    rectangle3Group,
    /// Two solid bars.
    pauseFill,
    /// An eye that is struck out.
    eyeSlash,
    squareGrid2x2,
    /// Three lines with a knob on each.
    sliderHorizontal3,
    keyboard,
    /// Three lines, each shorter than the one above it.
    line3HorizontalDecrease,
    display2,
    pawprint,
    pawprintFill,
    xmark,
    eye,
    arrowCounterclockwise,
    trash,
    arrowTriangle2Circlepath,
    handWave,
    handRaised,
    heart,
    /// An arrow that leaves a square.
    arrowUpForwardSquare,
    checkmark,
    checkmarkCircleFill,
    arrowLeft,
    arrowRight,
    arrowUpRight,
    wifi,
    battery75,
};

/// The lines of the symbol on a grid of 24 × 24 units, to be stroked with round ends and joins;
/// solid symbols are to be filled too.
QPainterPath symbolPath(Symbol symbol);

/// The stroke of a medium weight, in units of the grid.
inline constexpr double symbolStroke = 2;

/// Draws the symbol as large as fits into the middle of `rect`; `strokeWidth` is in units of the
/// grid and grows with the symbol.
void drawSymbol(QPainter& painter, Symbol symbol, const QRectF& rect, const QColor& color,
                double strokeWidth = symbolStroke);

}  // namespace tessellon
