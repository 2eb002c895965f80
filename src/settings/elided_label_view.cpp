#include "settings/elided_label_view.h"

#include "ui/accessible_role.h"
#include "ui/fonts.h"
#include "ui/text.h"

#include <QPainter>
#include <cmath>

namespace tessellon {
namespace {

/// As many words as fit, at least one.
qsizetype endOfLine(const QString& text, const QFont& font, double width) {
    auto end = text.indexOf(QLatin1Char(' '));
    for (auto next = end; next >= 0; next = text.indexOf(QLatin1Char(' '), next + 1)) {
        if (textWidth(font, text.left(next)) > width) {
            break;
        }
        end = next;
    }
    return end;
}

}  // namespace

ElidedLabel::ElidedLabel(const QString& text, const Style& style, QWidget* parent)
    : QWidget(parent), style_(style) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAccessibleRole(*this, QAccessible::StaticText);
    setText(text);
}

void ElidedLabel::setText(const QString& text) {
    const auto plain = singleLine(text);
    if (plain == text_) {
        return;
    }
    text_ = plain;
    setAccessibleName(text_);
    explain();
    updateGeometry();
    update();
}

void ElidedLabel::setColor(const QColor& color) {
    style_.color = color;
    update();
}

QStringList ElidedLabel::lines() const {
    const auto font = interfaceFont(style_.size, style_.weight);
    QStringList lines;
    QString rest = text_;
    while (!rest.isEmpty()) {
        const bool isLast = lines.size() + 1 == style_.lines;
        const bool fits = textWidth(font, rest) <= width();
        const auto end = fits || isLast ? -1 : endOfLine(rest, font, width());
        const auto line = end < 0 ? rest : rest.left(end);
        lines.append(fitText(line, width(), style_.size, style_.weight, 1).text);
        rest = end < 0 ? QString() : rest.mid(end + 1);
    }
    return lines;
}

QSize ElidedLabel::sizeHint() const {
    const auto font = interfaceFont(style_.size, style_.weight);
    return {static_cast<int>(std::ceil(textWidth(font, text_))), minimumSizeHint().height()};
}

QSize ElidedLabel::minimumSizeHint() const {
    const auto font = interfaceFont(style_.size, style_.weight);
    return {0, style_.lines * static_cast<int>(std::ceil(lineHeight(font)))};
}

void ElidedLabel::resizeEvent(QResizeEvent* /*event*/) {
    explain();
}

void ElidedLabel::explain() {
    // Names may look like markup, which tips would take them for.
    setToolTip(lines().join(QLatin1Char(' ')) == text_
                   ? QString()
                   : QStringLiteral("<p>") + text_.toHtmlEscaped() + QStringLiteral("</p>"));
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setFont(interfaceFont(style_.size, style_.weight));
    painter.setPen(style_.color);
    const auto shown = lines();
    const double height = std::ceil(lineHeight(painter.font()));
    const auto alignment = layoutDirection() == Qt::LeftToRight ? Qt::AlignLeft : Qt::AlignRight;
    double top = (this->height() - height * static_cast<double>(shown.size())) / 2;
    for (const auto& line : shown) {
        drawLine(painter, QRectF(0, top, width(), height), line, alignment);
        top += height;
    }
}

}  // namespace tessellon
