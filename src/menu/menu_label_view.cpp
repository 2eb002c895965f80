#include "menu/menu_label_view.h"

#include "ui/accessible_role.h"
#include "ui/fonts.h"

#include <QPainter>
#include <cmath>

namespace tessellon {

MenuLabel::MenuLabel(const QString& text, const Look& look, QWidget* parent)
    : QWidget(parent), look_(look) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleRole(*this, QAccessible::StaticText);
    setText(text);
    resize(MenuLabel::sizeHint());
}

void MenuLabel::setText(const QString& text) {
    text_ = text;
    setAccessibleName(text);
    update();
}

QSize MenuLabel::sizeHint() const {
    const QFont font = interfaceFont(look_.size, look_.weight);
    return {static_cast<int>(std::ceil(textWidth(font, text_))),
            static_cast<int>(std::ceil(lineHeight(font)))};
}

void MenuLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const auto fitted = fitText(text_, width(), look_.size, look_.weight, 1);
    painter.setFont(fitted.font);
    painter.setPen(look_.color);
    drawLine(painter, QRectF(rect()), fitted.text, look_.alignment);
}

}  // namespace tessellon
