#include "onboarding/speech_bubble_view.h"

#include "ui/control_style.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <cmath>

namespace tessellon {
namespace {

constexpr int bubbleHeight = 44;
constexpr double tailWidth = 12;
constexpr double tailHalf = 7;
constexpr double sidePadding = 16;
constexpr double spacing = 9;
constexpr double symbolSize = 20;
constexpr double fontSize = 16;

QFont bubbleFont() {
    return interfaceFont(fontSize, QFont::Bold);
}

}  // namespace

SpeechBubble::SpeechBubble(const QString& text, Symbol symbol, QWidget* parent)
    : QLabel(parent), symbol_(symbol) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setText(text);
}

void SpeechBubble::say(const QString& text, Symbol symbol) {
    symbol_ = symbol;
    setText(text);
    update();
}

QSize SpeechBubble::sizeHint() const {
    const double width =
        tailWidth + 2 * sidePadding + textWidth(bubbleFont(), text()) + spacing + symbolSize;
    return {static_cast<int>(std::ceil(width)), bubbleHeight};
}

void SpeechBubble::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool leftToRight = layoutDirection() == Qt::LeftToRight;
    if (!leftToRight) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    constexpr double inset = control_style::outline / 2;
    const QRectF body = QRectF(rect()).adjusted(tailWidth, inset, -inset, -inset);
    QPainterPath tail;
    const double middle = body.center().y();
    tail.moveTo(body.left() + tailWidth, middle - tailHalf);
    tail.quadTo(QPointF(body.left() + 1, middle), QPointF(inset, middle + tailHalf));
    tail.quadTo(QPointF(body.left() + 2, middle + tailHalf + 3),
                QPointF(body.left() + tailWidth, middle + tailHalf + 1));
    tail.closeSubpath();
    const QPainterPath shape = capsule(body) | tail;
    painter.fillPath(shape, palette::paper);
    painter.strokePath(shape, QPen(palette::ink, control_style::outline, Qt::SolidLine,
                                   Qt::RoundCap, Qt::RoundJoin));
    painter.resetTransform();

    QRectF content =
        QRectF(rect()).adjusted(leftToRight ? tailWidth + sidePadding : sidePadding, 0,
                                leftToRight ? -sidePadding : -tailWidth - sidePadding, 0);
    QRectF picture(0, 0, symbolSize, symbolSize);
    picture.moveCenter(content.center());
    if (leftToRight) {
        picture.moveRight(content.right());
    } else {
        picture.moveLeft(content.left());
    }
    painter.setFont(bubbleFont());
    painter.setPen(palette::ink);
    drawLine(painter, content, text(), leftToRight ? Qt::AlignLeft : Qt::AlignRight);
    drawSymbol(painter, symbol_, picture, palette::ink);
}

}  // namespace tessellon
