#include "ui/status_glyph.h"

#include <QImage>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>
#include <algorithm>
#include <cmath>
#include <cstddef>

namespace tessellon {
namespace {

// The box that the mark is drawn in.
constexpr int box = 18;
constexpr double radius = 2;
constexpr double pulseWidth = 1.3;

/// The edges of the tiles: the outer ones of the outlined tile on the left, and those of the solid
/// tiles on the right.
struct Edges {
    double left = 1;
    double top = 1;
    double tallRight = 10;
    double solidLeft = 10.5;
    double right = 17;
    double upperBottom = 8.25;
    double lowerTop = 9.75;
    double bottom = 17;
    double outline = 1.5;
};

Edges scaled(double by) {
    Edges e;
    for (double* const edge : {&e.left, &e.top, &e.tallRight, &e.solidLeft, &e.right,
                               &e.upperBottom, &e.lowerTop, &e.bottom, &e.outline}) {
        *edge *= by;
    }
    return e;
}

/// On whole pixels, with the gaps between the tiles at least one wide. The outline keeps its width,
/// so that the tall tile is as strong as the others in the smallest sizes too.
Edges onPixels(const Edges& exact) {
    Edges e = exact;
    for (double* const edge :
         {&e.left, &e.top, &e.tallRight, &e.right, &e.upperBottom, &e.bottom}) {
        *edge = std::round(*edge);
    }
    e.solidLeft = std::max(std::round(exact.solidLeft), e.tallRight + 1);
    // The two tiles on the right are of the same height.
    e.lowerTop = e.top + e.bottom - e.upperBottom;
    if (e.lowerTop < e.upperBottom + 1) {
        e.upperBottom -= 1;
        e.lowerTop += 1;
    }
    return e;
}

void addTile(QPainterPath& path, const QRectF& rect, double cornerRadius) {
    path.addRoundedRect(rect, cornerRadius, cornerRadius);
}

void paint(QPainter& painter, const Edges& e, double scale, const QColor& color) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(color, e.outline));
    const double half = e.outline / 2;
    QPainterPath tall;
    addTile(
        tall,
        QRectF(QPointF(e.left + half, e.top + half), QPointF(e.tallRight - half, e.bottom - half)),
        radius * scale);
    painter.drawPath(tall);

    QPolygonF pulse({{3, 9}, {4.5, 9}, {5.5, 5.5}, {6.5, 12}, {7.25, 9}, {8, 9}});
    for (QPointF& point : pulse) {
        point *= scale;
    }
    painter.setPen(QPen(color, pulseWidth * scale, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.drawPolyline(pulse);

    QPainterPath solid;
    addTile(solid, QRectF(QPointF(e.solidLeft, e.top), QPointF(e.right, e.upperBottom)),
            radius * scale);
    addTile(solid, QRectF(QPointF(e.solidLeft, e.lowerTop), QPointF(e.right, e.bottom)),
            radius * scale);
    painter.fillPath(solid, color);
}

}  // namespace

void paintStatusGlyph(QPainter& painter, const QRectF& rect, const QColor& color) {
    const double side = std::min(rect.width(), rect.height());
    painter.save();
    painter.translate(rect.center() - QPointF(side / 2, side / 2));
    const double scale = side / box;
    paint(painter, scaled(scale), scale, color);
    painter.restore();
}

IconImage statusGlyphImage(int size, IconColor color) {
    // Larger than any tray's icons, and small enough for the memory.
    constexpr int largest = 1024;
    if (size <= 0 || size > largest) {
        return {};
    }
    QImage picture(size, size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    {
        QPainter painter(&picture);
        const double scale = static_cast<double>(size) / box;
        const Edges exact = scaled(scale);
        paint(painter, size % box == 0 ? exact : onPixels(exact), scale, QColor::fromRgb(color));
    }
    IconImage image;
    image.size = size;
    image.pixels.reserve(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    for (int y = 0; y < size; ++y) {
        const auto* const row = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        image.pixels.insert(image.pixels.end(), row, row + size);
    }
    return image;
}

}  // namespace tessellon
