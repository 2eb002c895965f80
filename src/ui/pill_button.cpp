#include "ui/pill_button.h"

#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/layer.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

constexpr int buttonHeight = 34;
constexpr int sidePadding = 18;
constexpr int leastWidth = 84;
constexpr double fontSize = 13;

// How much ink the color of the button takes on below the pointer, and while it is pressed.
constexpr double hoverShade = 0.06;
constexpr double pressedShade = 0.14;

QFont buttonFont() {
    return interfaceFont(fontSize, QFont::Bold);
}

}  // namespace

PillButton::PillButton(const QString& text, PillButtonStyle style, QWidget* parent)
    : QAbstractButton(parent), style_(style) {
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    new FocusRing(*this, buttonHeight / 2.0);
}

PillButton::PillButton(const QString& text, PillButtonStyle style, PillButtonSize /*size*/,
                       QWidget* parent)
    : PillButton(text, style, parent) {}

void PillButton::setSymbol(Symbol /*symbol*/, SymbolSide /*side*/) {}

QSize PillButton::sizeHint() const {
    const auto content = static_cast<int>(std::ceil(textWidth(buttonFont(), text())));
    return {std::max(content + 2 * sidePadding, leastWidth), buttonHeight};
}

void PillButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter widgetPainter(this);
    const double opacity = isEnabled() ? 1 : control_style::disabledOpacity;
    paintLayer(widgetPainter, rect().size(), opacity, [this](QPainter& painter) {
        const QRectF all = rect();
        paintCapsule(painter, all,
                     style_ == PillButtonStyle::primary ? palette::amber : palette::paper);
        const double shade = isDown() ? pressedShade : hoverShade;
        if (isDown() || (isEnabled() && underMouse())) {
            paintCapsule(painter, all, palette::withOpacity(palette::ink, shade));
        }
        strokeCapsuleBorder(painter, all, {palette::ink, control_style::outline});
        painter.setFont(buttonFont());
        painter.setPen(palette::ink);
        drawLine(painter, all, text());
    });
}

void PillButton::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (!event->isAutoRepeat()) {
            click();
        }
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

}  // namespace tessellon
