// A symbol by itself, as decoration.
#pragma once

#include "ui/symbols.h"

#include <QColor>
#include <QWidget>

namespace tessellon {

/// Assistive technology passes over it.
class SymbolLabel : public QWidget {
  public:
    /// `size` is the side in logical pixels, `strokeWidth` in units of the symbol's grid.
    SymbolLabel(Symbol symbol, int size, const QColor& color, double strokeWidth = symbolStroke,
                QWidget* parent = nullptr);

    void setSymbol(Symbol symbol);
    void setColor(const QColor& color);
    QSize sizeHint() const override { return {size_, size_}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Symbol symbol_;
    int size_;
    QColor color_;
    double strokeWidth_;
};

}  // namespace tessellon
