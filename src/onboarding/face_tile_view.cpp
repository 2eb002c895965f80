#include "onboarding/face_tile_view.h"

#include "ui/palette.h"
#include "ui/shapes.h"

#include <QPainterPath>
#include <QPen>
#include <algorithm>

namespace tessellon {
namespace {

constexpr double faceSize = 58;
constexpr double tileRadius = 20;
constexpr double outline = 2;

// The parts of the face in its own square, whose left half the right one mirrors.
constexpr double eyeX = 17;
constexpr double eyeY = 23.5;
constexpr QSizeF eyeSize(8.6, 11.6);
constexpr double glintSize = 3.2;
constexpr QPointF glintOffset(1.2, -2.7);
constexpr double cheekX = 6.5;
constexpr double cheekY = 34.5;
constexpr QSizeF cheekSize(12, 7.2);
constexpr double mouthX = 19;
constexpr double mouthY = 34.5;
constexpr double mouthDepth = 45;
constexpr double mouthStroke = 2.8;

void drawOval(QPainter& painter, const QPointF& center, const QSizeF& size, const QColor& color) {
    painter.setBrush(color);
    painter.drawEllipse(center, size.width() / 2, size.height() / 2);
}

void drawEye(QPainter& painter, const QPointF& center) {
    drawOval(painter, center, eyeSize, palette::ink);
    drawOval(painter, center + glintOffset, {glintSize, glintSize}, palette::white);
}

/// A mouth that is closed and content, or open and glad.
void drawMouth(QPainter& painter, Blush blush) {
    QPainterPath lips;
    lips.moveTo(mouthX, mouthY);
    lips.cubicTo(QPointF(mouthX + 3, mouthDepth), QPointF(faceSize - mouthX - 3, mouthDepth),
                 QPointF(faceSize - mouthX, mouthY));
    const QPen pen(palette::ink, mouthStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    if (blush == Blush::none) {
        painter.strokePath(lips, pen);
        return;
    }
    constexpr double jaw = 5;
    QPainterPath open;
    open.moveTo(mouthX, mouthY);
    open.cubicTo(QPointF(mouthX + 1, mouthDepth + jaw),
                 QPointF(faceSize - mouthX - 1, mouthDepth + jaw),
                 QPointF(faceSize - mouthX, mouthY));
    open.quadTo(QPointF(faceSize / 2, mouthY + 2), QPointF(mouthX, mouthY));
    painter.fillPath(open, palette::ink);
    QPainterPath tongue;
    tongue.addEllipse(QPointF(faceSize / 2, mouthDepth + 1), 5, 3.6);
    painter.fillPath(tongue & open, palette::coral);
    painter.strokePath(
        open, QPen(palette::ink, mouthStroke - 0.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

}  // namespace

void paintFace(QPainter& painter, const QRectF& rect, Blush blush) {
    const double scale = std::min(rect.width(), rect.height()) / faceSize;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.center());
    painter.scale(scale, scale);
    painter.translate(-faceSize / 2, -faceSize / 2);
    painter.setPen(Qt::NoPen);
    if (blush == Blush::rosy) {
        drawOval(painter, {cheekX, cheekY}, cheekSize, palette::pink);
        drawOval(painter, {faceSize - cheekX, cheekY}, cheekSize, palette::pink);
    }
    drawEye(painter, {eyeX, eyeY});
    drawEye(painter, {faceSize - eyeX, eyeY});
    drawMouth(painter, blush);
    painter.restore();
}

FaceTile::FaceTile(const QColor& color, Blush blush, QWidget* parent)
    : QWidget(parent), color_(color), blush_(blush) {
    setFixedSize(tileSize);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void FaceTile::setFace(const QColor& color, Blush blush) {
    color_ = color;
    blush_ = blush;
    update();
}

void FaceTile::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintRoundedRect(painter, rect(), tileRadius, color_, {palette::ink, outline});

    QRectF face(0, 0, faceSize, faceSize);
    face.moveCenter(QRectF(rect()).center());
    paintFace(painter, face, blush_);
}

}  // namespace tessellon
