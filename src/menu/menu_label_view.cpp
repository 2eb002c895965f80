#include "menu/menu_label_view.h"

#include "base/text.h"
#include "ui/accessible_role.h"
#include "ui/fonts.h"

#include <QPainter>
#include <cmath>

namespace tessellon {
namespace {

// Far more than fits into any line of the panel. Measuring a text takes time for each character.
constexpr qsizetype longestLine = 300;

// FIRST STRONG ISOLATE and POP DIRECTIONAL ISOLATE, which do not show.
constexpr QChar isolateStart(0x2068);
constexpr QChar isolateEnd(0x2069);

}  // namespace

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

QString singleLine(const std::string& text) {
    auto line = QString::fromStdString(plainText(text)).simplified();
    if (line.size() > longestLine) {
        line.truncate(longestLine);
        line.append(QChar(0x2026));
    }
    return line;
}

QString isolated(const QString& line) {
    return line.isEmpty() ? line : isolateStart + line + isolateEnd;
}

}  // namespace tessellon
