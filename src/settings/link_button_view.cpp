#include "settings/link_button_view.h"

#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/return_key.h"

#include <QPainter>
#include <cmath>

namespace tessellon {
namespace {

constexpr double fontSize = 12;
constexpr double ringRadius = 4;
constexpr double lineGap = 3;  // from the foot of the letters
constexpr double lineWidth = 1.2;

QFont linkFont() {
    return interfaceFont(fontSize, QFont::DemiBold);
}

}  // namespace

LinkButton::LinkButton(const QString& text, QWidget* parent) : QAbstractButton(parent) {
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_Hover);
    new FocusRing(*this, ringRadius);
}

QSize LinkButton::sizeHint() const {
    const QFont font = linkFont();
    return {static_cast<int>(std::ceil(textWidth(font, text()))),
            static_cast<int>(std::ceil(lineHeight(font)))};
}

void LinkButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QColor color = isDown() || underMouse() ? palette::muted : palette::ink;
    painter.setFont(linkFont());
    painter.setPen(color);
    drawLine(painter, rect(), text());
    const double foot = rect().center().y() + QFontMetricsF(painter.font()).capHeight() / 2;
    painter.fillRect(QRectF(0, foot + lineGap, width(), lineWidth), color);
}

void LinkButton::keyPressEvent(QKeyEvent* event) {
    if (!clickByReturn(*this, *event)) {
        QAbstractButton::keyPressEvent(event);
    }
}

}  // namespace tessellon
