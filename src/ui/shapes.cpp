#include "ui/shapes.h"

#include <QPaintDevice>
#include <QPen>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace tessellon {
namespace {

// The distance from a corner to its arc's middle, along either edge, for a radius of 1.
constexpr double diagonal = 1 - std::numbers::sqrt2 / 2;

QRectF inset(const QRectF& rect, double by) {
    const double x = std::min(by, rect.width() / 2);
    const double y = std::min(by, rect.height() / 2);
    return rect.adjusted(x, y, -x, -y);
}

// The fill ends under the middle of the border, so that none of it shines through around it.
void paint(QPainter& painter, const QPainterPath& path, const QColor& fill, const Border& border) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(border.width > 0 ? QPen(border.color, border.width) : QPen(Qt::NoPen));
    painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter.drawPath(path);
    painter.restore();
}

/// The colour that one lets shine through from below.
QColor over(const QColor& upper, const QColor& lower) {
    const double opacity = upper.alphaF();
    const double below = lower.alphaF() * (1 - opacity);
    const double sum = opacity + below;
    if (sum <= 0) {
        return Qt::transparent;
    }
    const auto mixed = [&](double a, double b) {
        return static_cast<float>(std::clamp((a * opacity + b * below) / sum, 0.0, 1.0));
    };
    return QColor::fromRgbF(mixed(upper.redF(), lower.redF()),
                            mixed(upper.greenF(), lower.greenF()),
                            mixed(upper.blueF(), lower.blueF()), static_cast<float>(sum));
}

/// The straight edges and what is between them; the corners are squares of `corner`.
void setStraightParts(QPainter& painter, const QRectF& rect, double corner, double pixel,
                      const QColor& fill, const Border& border) {
    painter.fillRect(rect.adjusted(0, corner, 0, -corner), fill);
    const double between = rect.width() - 2 * corner;
    painter.fillRect(QRectF(rect.left() + corner, rect.top(), between, corner), fill);
    painter.fillRect(QRectF(rect.left() + corner, rect.bottom() - corner, between, corner), fill);
    const double pixels = border.width / pixel;
    for (int i = 0; i < pixels; ++i) {
        QColor line = border.color;
        line.setAlphaF(line.alphaF() * static_cast<float>(std::min(1.0, pixels - i)));
        line = over(line, fill);
        const double near = i * pixel;
        const double far = near + pixel;
        painter.fillRect(QRectF(rect.left() + corner, rect.top() + near, between, pixel), line);
        painter.fillRect(QRectF(rect.left() + corner, rect.bottom() - far, between, pixel), line);
        const double height = rect.height() - 2 * corner;
        painter.fillRect(QRectF(rect.left() + near, rect.top() + corner, pixel, height), line);
        painter.fillRect(QRectF(rect.right() - far, rect.top() + corner, pixel, height), line);
    }
}

}  // namespace

QPainterPath continuousRoundedRect(const QRectF& rect, double radius) {
    const double half = std::min(rect.width(), rect.height()) / 2;
    const double r = std::clamp(radius, 0.0, std::max(half, 0.0));
    QPainterPath path;
    if (r <= 0) {
        path.addRect(rect);
        return path;
    }
    const double extent = std::min(r * continuousCornerReach, half);
    // Each corner is one cubic. Its handles are as long as it takes for the middle of the curve to
    // lie on the middle of the arc; with an extent of r that is the usual circle.
    const double handle = extent * (4 - 8 * diagonal * r / extent) / 3;
    const double rest = extent - handle;
    const double left = rect.left();
    const double top = rect.top();
    const double right = rect.right();
    const double bottom = rect.bottom();
    path.moveTo(left + extent, top);
    path.lineTo(right - extent, top);
    path.cubicTo(right - rest, top, right, top + rest, right, top + extent);
    path.lineTo(right, bottom - extent);
    path.cubicTo(right, bottom - rest, right - rest, bottom, right - extent, bottom);
    path.lineTo(left + extent, bottom);
    path.cubicTo(left + rest, bottom, left, bottom - rest, left, bottom - extent);
    path.lineTo(left, top + extent);
    path.cubicTo(left, top + rest, left + rest, top, left + extent, top);
    path.closeSubpath();
    return path;
}

QPainterPath capsule(const QRectF& rect) {
    const double radius = std::min(rect.width(), rect.height()) / 2;
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    return path;
}

void paintRoundedRect(QPainter& painter, const QRectF& rect, double radius, const QColor& fill,
                      const Border& border) {
    const double half = border.width / 2;
    paint(painter, continuousRoundedRect(inset(rect, half), radius - half), fill, border);
}

void paintCapsule(QPainter& painter, const QRectF& rect, const QColor& fill, const Border& border) {
    paint(painter, capsule(inset(rect, border.width / 2)), fill, border);
}

void strokeBorder(QPainter& painter, const QRectF& rect, double radius, const Border& border) {
    paintRoundedRect(painter, rect, radius, QColor(), border);
}

void strokeCapsuleBorder(QPainter& painter, const QRectF& rect, const Border& border) {
    paintCapsule(painter, rect, QColor(), border);
}

void setRoundedRect(QPainter& painter, const QRectF& rect, double radius, const QColor& fill,
                    const Border& border) {
    const auto paintWhole = [&] {
        // One after the other: the fill goes on beneath the translucent border.
        paintRoundedRect(painter, rect, radius, fill);
        strokeBorder(painter, rect, radius, border);
    };
    const double pixel = 1 / painter.device()->devicePixelRatioF();
    const double reach = std::max(radius * continuousCornerReach, border.width);
    const double corner = std::ceil(reach / pixel) * pixel;
    if (2 * corner >= std::min(rect.width(), rect.height())) {
        paintWhole();
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    setStraightParts(painter, rect, corner, pixel, fill, border);
    painter.restore();
    for (const double x : {rect.left(), rect.right() - corner}) {
        for (const double y : {rect.top(), rect.bottom() - corner}) {
            painter.save();
            painter.setClipRect(QRectF(x, y, corner, corner), Qt::IntersectClip);
            paintWhole();
            painter.restore();
        }
    }
}

}  // namespace tessellon
