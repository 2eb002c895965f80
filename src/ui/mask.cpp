#include "ui/mask.h"

#include <QImage>
#include <QPainter>
#include <QPen>
#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace tessellon {
namespace {

/// Pixels first…last-1 of a row.
using Run = std::pair<int, int>;
using Row = std::vector<Run>;

constexpr int half = 128;  // of full coverage

QImage coverage(const QSize& size, const QPainterPath& shape, const QPen& pen,
                const QBrush& brush) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(brush);
    painter.drawPath(shape);
    return image;
}

void append(Row& row, Run run) {
    if (run.first >= run.second) {
        return;
    }
    if (!row.empty() && row.back().second >= run.first) {
        row.back().second = std::max(row.back().second, run.second);
    } else {
        row.push_back(run);
    }
}

/// A row of the left end, the middle and the left end's mirror image.
Row wholeRow(const Row& left, Run middle, int width) {
    Row row = left;
    append(row, middle);
    for (auto run = left.rbegin(); run != left.rend(); ++run) {
        append(row, {width - run->second, width - run->first});
    }
    return row;
}

/// The rows of the top left corner, as far as `isInside` says so.
template <typename Inside>
std::vector<Row> cornerRows(const QSize& corner, const Inside& isInside) {
    std::vector<Row> rows(static_cast<std::size_t>(corner.height()));
    for (int y = 0; y < corner.height(); ++y) {
        for (int x = 0; x < corner.width(); ++x) {
            if (isInside(x, y)) {
                append(rows[static_cast<std::size_t>(y)], {x, x + 1});
            }
        }
    }
    return rows;
}

void addRow(std::vector<QRect>& rects, const QRect& rect, int top, int height, const Row& row) {
    for (const auto& [first, last] : row) {
        rects.emplace_back(rect.left() + first, rect.top() + top, last - first, height);
    }
}

/// The shape, or a ring of that width along its edge.
QRegion mask(const QRect& rect, double radius, std::optional<int> ring) {
    const auto shape = continuousRoundedRect(QRectF(QPointF(), rect.size()), radius);
    const int extent = static_cast<int>(std::ceil(std::max(radius, 0.0) * continuousCornerReach));
    // A ring's corner has to hold the whole of its bend.
    const int reach = std::max(extent, ring.value_or(0));
    const QSize corner(std::min(reach, rect.width() / 2), std::min(reach, rect.height() / 2));
    const auto filled = coverage(corner, shape, Qt::NoPen, Qt::white);
    // Half of the pen is outside.
    const auto stroked =
        ring ? coverage(corner, shape, QPen(Qt::white, 2 * *ring), Qt::NoBrush) : filled;
    const auto rows = cornerRows(corner, [&](int x, int y) {
        return qAlpha(filled.pixel(x, y)) >= half && qAlpha(stroked.pixel(x, y)) >= half;
    });

    const Run middle(corner.width(), rect.width() - corner.width());
    const auto fullRow = [&](int y) {
        const bool reachesMiddle = !ring || y < *ring;
        return wholeRow(rows[static_cast<std::size_t>(y)], reachesMiddle ? middle : Run(),
                        rect.width());
    };
    // From the top to the bottom, as setRects wants them.
    std::vector<QRect> rects;
    for (int y = 0; y < corner.height(); ++y) {
        addRow(rects, rect, y, 1, fullRow(y));
    }
    if (const int height = rect.height() - 2 * corner.height(); height > 0) {
        const Row edge{{0, ring.value_or(0)}};
        addRow(rects, rect, corner.height(), height,
               ring ? wholeRow(edge, Run(), rect.width()) : Row{{0, rect.width()}});
    }
    for (int y = corner.height() - 1; y >= 0; --y) {
        addRow(rects, rect, rect.height() - 1 - y, 1, fullRow(y));
    }
    QRegion region;
    region.setRects(rects.data(), static_cast<int>(rects.size()));
    return region;
}

}  // namespace

QRegion roundedMask(const QRect& rect, double radius) {
    if (rect.isEmpty() || radius <= 0) {
        return QRegion(rect);
    }
    return mask(rect, radius, std::nullopt);
}

QRegion ringMask(const QRect& rect, double radius, int width) {
    if (2 * width >= std::min(rect.width(), rect.height())) {
        return roundedMask(rect, radius);
    }
    return mask(rect, radius, width);
}

void paintRing(QPainter& painter, const QRect& rect, double radius, int width,
               const RingColors& colors) {
    // Pixels at the edges are covered in part only, and nothing is to shine through those that the
    // mask keeps: every colour goes on beyond its end.
    constexpr double beyond = 2;
    const auto shape = continuousRoundedRect(QRectF(rect), radius);
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    painter.fillRect(rect, colors.line.color);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(colors.inner, 2 * (width + beyond)));
    painter.drawPath(shape);
    painter.setPen(QPen(colors.line.color, 2 * colors.line.width));
    painter.drawPath(shape);
    painter.restore();
}

}  // namespace tessellon
