#include "ui/symbol_label.h"

#include <QPainter>

namespace tessellon {

SymbolLabel::SymbolLabel(Symbol symbol, int size, const QColor& color, double strokeWidth,
                         QWidget* parent)
    : QWidget(parent), symbol_(symbol), size_(size), color_(color), strokeWidth_(strokeWidth) {
    setFixedSize(size, size);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SymbolLabel::setSymbol(Symbol symbol) {
    symbol_ = symbol;
    update();
}

void SymbolLabel::setColor(const QColor& color) {
    color_ = color;
    update();
}

void SymbolLabel::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    drawSymbol(painter, symbol_, rect(), color_, strokeWidth_);
}

}  // namespace tessellon
