#include "onboarding/state_pill_view.h"

#include "ui/control_style.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <QPainter>
#include <cmath>

namespace tessellon {
namespace {

constexpr double fillOpacity = 0.18;

struct Measures {
    int height;
    double sidePadding;
    double spacing;
    double signSize;
    double dotSize;
    double fontSize;
};

constexpr Measures regular{34, 15, 8, 17, 9, 13};
constexpr Measures small{24, 10, 5, 13, 7, 11};

const Measures& measures(StatePillSize size) {
    return size == StatePillSize::regular ? regular : small;
}

QFont pillFont(const Measures& m) {
    return interfaceFont(m.fontSize, QFont::DemiBold);
}

double signWidth(const Measures& m, const std::optional<Symbol>& symbol) {
    return symbol ? m.signSize : m.dotSize;
}

}  // namespace

StatePill::StatePill(const PillState& state, StatePillSize size, QWidget* parent)
    : QLabel(parent), size_(size) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setState(state);
}

void StatePill::setState(const PillState& state) {
    color_ = state.color;
    symbol_ = state.symbol;
    setText(state.text);
    updateGeometry();
    update();
}

QSize StatePill::sizeHint() const {
    const auto& m = measures(size_);
    const double width =
        2 * m.sidePadding + signWidth(m, symbol_) + m.spacing + textWidth(pillFont(m), text());
    return {static_cast<int>(std::ceil(width)), m.height};
}

void StatePill::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const auto& m = measures(size_);
    paintCapsule(painter, rect(), palette::withOpacity(color_, fillOpacity),
                 {palette::ink, control_style::thinOutline});
    const bool leftToRight = layoutDirection() == Qt::LeftToRight;
    const QRectF content = QRectF(rect()).adjusted(m.sidePadding, 0, -m.sidePadding, 0);
    const double side = signWidth(m, symbol_);
    QRectF sign(0, 0, side, side);
    sign.moveCenter(content.center());
    if (leftToRight) {
        sign.moveLeft(content.left());
    } else {
        sign.moveRight(content.right());
    }
    if (symbol_) {
        drawSymbol(painter, *symbol_, sign, color_);
    } else {
        paintCapsule(painter, sign, color_);
    }
    painter.setFont(pillFont(m));
    painter.setPen(palette::ink);
    drawLine(painter, content, text(), leftToRight ? Qt::AlignRight : Qt::AlignLeft);
}

}  // namespace tessellon
