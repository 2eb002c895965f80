#include "ui/pill_button.h"

#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/layer.h"
#include "ui/palette.h"
#include "ui/return_key.h"
#include "ui/shapes.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

// In logical pixels.
struct Measures {
    int height;
    int sidePadding;
    int leastWidth;
    double fontSize;
    QFont::Weight fontWeight;
    double symbolSize;
    double symbolSpacing;
};

constexpr Measures regularMeasures{34, 18, 84, 13, QFont::Bold, 16, 7};
constexpr Measures smallMeasures{26, 11, 0, 12, QFont::DemiBold, 12, 5};

// What a button has beside its text when it is nothing else.
constexpr int plainPadding = 6;

constexpr double symbolWeight = 2.4;

// How opaque a button is that cannot be pressed.
constexpr double disabledOpacity = 0.5;

// How much ink the color of the button takes on below the pointer, and while it is pressed.
constexpr double hoverShade = 0.06;
constexpr double pressedShade = 0.14;

const Measures& measuresOf(PillButtonSize size) {
    return size == PillButtonSize::small ? smallMeasures : regularMeasures;
}

QFont buttonFont(PillButtonSize size) {
    const auto& measures = measuresOf(size);
    return interfaceFont(measures.fontSize, measures.fontWeight);
}

}  // namespace

PillButton::PillButton(const QString& text, PillButtonStyle style, QWidget* parent)
    : PillButton(text, style, PillButtonSize::regular, parent) {}

PillButton::PillButton(const QString& text, PillButtonStyle style, PillButtonSize size,
                       QWidget* parent)
    : QAbstractButton(parent), style_(style), size_(size) {
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
    new FocusRing(*this, measuresOf(size).height / 2.0);
}

void PillButton::setSymbol(Symbol symbol, SymbolSide side) {
    symbol_ = symbol;
    symbolSide_ = side;
    updateGeometry();
    update();
}

double PillButton::contentWidth() const {
    const auto& measures = measuresOf(size_);
    const double besideText = symbol_ ? measures.symbolSize + measures.symbolSpacing : 0;
    return textWidth(buttonFont(size_), text()) + besideText;
}

QSize PillButton::sizeHint() const {
    const auto& measures = measuresOf(size_);
    const auto content = static_cast<int>(std::ceil(contentWidth()));
    if (style_ == PillButtonStyle::plain) {
        return {content + 2 * plainPadding, measures.height};
    }
    return {std::max(content + 2 * measures.sidePadding, measures.leastWidth), measures.height};
}

void PillButton::paintEvent(QPaintEvent* /*event*/) {
    QPainter widgetPainter(this);
    const double opacity = isEnabled() ? 1 : disabledOpacity;
    paintLayer(widgetPainter, rect().size(), opacity, [this](QPainter& painter) {
        const bool touched = isDown() || (isEnabled() && underMouse());
        if (style_ == PillButtonStyle::plain) {
            paintContent(painter, touched ? palette::ink : palette::muted);
            return;
        }
        const QRectF all = rect();
        paintCapsule(painter, all,
                     style_ == PillButtonStyle::primary ? palette::amber : palette::paper);
        if (touched) {
            const double shade = isDown() ? pressedShade : hoverShade;
            paintCapsule(painter, all, palette::withOpacity(palette::ink, shade));
        }
        strokeCapsuleBorder(painter, all, {palette::ink, control_style::outline});
        paintContent(painter, palette::ink);
    });
}

void PillButton::paintContent(QPainter& painter, const QColor& color) const {
    const auto& measures = measuresOf(size_);
    const double width = contentWidth();
    QRectF content((this->width() - width) / 2, 0, width, height());
    if (symbol_) {
        QRectF square(content.left(), (height() - measures.symbolSize) / 2, measures.symbolSize,
                      measures.symbolSize);
        const double taken = measures.symbolSize + measures.symbolSpacing;
        const bool isLeft =
            (symbolSide_ == SymbolSide::leading) == (layoutDirection() == Qt::LeftToRight);
        if (isLeft) {
            content.setLeft(content.left() + taken);
        } else {
            square.moveRight(content.right());
            content.setRight(content.right() - taken);
        }
        drawSymbol(painter, *symbol_, square, color, symbolWeight);
    }
    painter.setFont(buttonFont(size_));
    painter.setPen(color);
    drawLine(painter, content, text());
}

void PillButton::keyPressEvent(QKeyEvent* event) {
    if (!clickByReturn(*this, *event)) {
        QAbstractButton::keyPressEvent(event);
    }
}

}  // namespace tessellon
