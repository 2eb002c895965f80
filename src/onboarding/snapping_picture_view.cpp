#include "onboarding/snapping_picture_view.h"

#include "onboarding/face_tile_view.h"
#include "onboarding/pointer_view.h"
#include "ui/key_chips.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/status_glyph.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <algorithm>

namespace tessellon {
namespace {

// Everything below is in the units of this canvas.
constexpr QSizeF canvas(560, 280);
constexpr double outline = 1.5;

constexpr double screenRadius = 20;
constexpr double barHeight = 26;
constexpr double windowRadius = 13;
constexpr double titleBarHeight = 22;

constexpr QRectF leftZone(12, 38, 263, 230);
constexpr QRectF upperWindow(285, 38, 263, 110);
constexpr QRectF lowerWindow(285, 158, 263, 110);
constexpr QSizeF draggedSize(206, 152);
constexpr QPointF draggedCenter(178, 160);
constexpr double draggedAngle = -6;

void drawBar(QPainter& painter) {
    const QRectF bar(0, 0, canvas.width(), barHeight);
    painter.save();
    painter.setClipPath(continuousRoundedRect(QRectF(QPointF(), canvas), screenRadius));
    painter.fillRect(bar, palette::paper);
    painter.fillRect(QRectF(0, barHeight - outline, canvas.width(), outline), palette::ink);
    painter.restore();
    const double middle = (barHeight - outline) / 2;
    double left = 18;
    for (const double width : {30.0, 20.0, 24.0}) {
        paintCapsule(painter, QRectF(left, middle - 2.5, width, 5), palette::line);
        left += width + 10;
    }
    paintCapsule(painter, QRectF(canvas.width() - 46, middle - 2.5, 28, 5), palette::line);
    paintStatusGlyph(painter, QRectF(canvas.width() - 72, middle - 7, 14, 14), palette::ink);
}

void drawWindow(QPainter& painter, const QRectF& frame, const QColor& color) {
    const QPainterPath shape = continuousRoundedRect(frame, windowRadius);
    const QRectF titleBar(frame.topLeft(), QSizeF(frame.width(), titleBarHeight));
    QPainterPath above;
    above.addRect(titleBar);
    painter.fillPath(shape, palette::paper);
    painter.fillPath(shape & above, color);
    painter.fillRect(QRectF(frame.left(), titleBar.bottom() - outline, frame.width(), outline),
                     palette::ink);
    strokeBorder(painter, frame, windowRadius, {palette::ink, outline});
    constexpr double dot = 7;
    for (int i = 0; i < 3; ++i) {
        paintCapsule(painter,
                     QRectF(frame.left() + 11 + i * (dot + 4),
                            titleBar.center().y() - dot / 2 - outline / 2, dot, dot),
                     palette::paper, {palette::ink, 1});
    }
}

/// Bars that stand for text.
void drawText(QPainter& painter, const QRectF& window, std::initializer_list<double> shares) {
    constexpr double inset = 16;
    constexpr double thickness = 7;
    const double width = window.width() - 2 * inset;
    double top = window.top() + titleBarHeight + 17;
    for (const double share : shares) {
        paintCapsule(painter, QRectF(window.left() + inset, top, width * share, thickness),
                     palette::line);
        top += thickness + 11;
    }
}

void drawZone(QPainter& painter) {
    constexpr double fillOpacity = 0.2;
    constexpr double width = 2.5;
    constexpr double radius = 15;
    paintRoundedRect(painter, leftZone, radius, palette::withOpacity(palette::teal, fillOpacity));
    painter.setPen(QPen(palette::teal, width, Qt::CustomDashLine, Qt::RoundCap));
    QPen pen = painter.pen();
    pen.setDashPattern({3.2, 2.6});
    painter.strokePath(
        continuousRoundedRect(leftZone.adjusted(width / 2, width / 2, -width / 2, -width / 2),
                              radius - width / 2),
        pen);
}

void drawDraggedWindow(QPainter& painter) {
    painter.save();
    painter.translate(draggedCenter);
    painter.rotate(draggedAngle);
    const QRectF frame(QPointF(-draggedSize.width() / 2, -draggedSize.height() / 2), draggedSize);
    constexpr double shadow = 0.14;
    paintRoundedRect(painter, frame.translated(7, 9), windowRadius,
                     palette::withOpacity(palette::ink, shadow));
    drawWindow(painter, frame, palette::amber);
    paintFace(painter, frame.adjusted(0, titleBarHeight + 16, 0, -16), Blush::rosy);
    painter.translate(38, frame.top() + titleBarHeight / 2);
    painter.rotate(-draggedAngle);
    constexpr double capSize = 34;
    paintKeyChips(painter, QPointF(27, 13), {QStringLiteral("⌘")}, capSize);
    constexpr double pointerHeight = 29;
    paintPointer(painter, QPointF(0, 0), pointerHeight);
    painter.restore();
}

}  // namespace

SnappingPicture::SnappingPicture(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

QSize SnappingPicture::sizeHint() const {
    return canvas.toSize();
}

QSize SnappingPicture::minimumSizeHint() const {
    return (canvas * 0.5).toSize();
}

void SnappingPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = std::min(width() / canvas.width(), height() / canvas.height());
    painter.translate(QRectF(rect()).center());
    painter.scale(scale, scale);
    painter.translate(-canvas.width() / 2, -canvas.height() / 2);
    paintRoundedRect(painter, QRectF(QPointF(), canvas), screenRadius, palette::cream);
    drawBar(painter);
    drawZone(painter);
    drawWindow(painter, upperWindow, palette::lavender);
    drawText(painter, upperWindow, {0.72, 0.94, 0.5});
    drawWindow(painter, lowerWindow, palette::pink);
    drawText(painter, lowerWindow, {0.9, 0.6, 0.78});
    strokeBorder(painter, QRectF(QPointF(), canvas), screenRadius, {palette::ink, 2});
    drawDraggedWindow(painter);
}

}  // namespace tessellon
