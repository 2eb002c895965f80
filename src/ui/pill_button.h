// The push button of the program: a capsule with a line of text.
#pragma once

#include "ui/symbols.h"

#include <QAbstractButton>
#include <QColor>
#include <QPainter>
#include <QString>
#include <cstdint>
#include <optional>

namespace tessellon {

/// What a page is there for is the primary button; quiet ones lie beside it, and plain ones are
/// nothing but their text, in the color of secondary text.
enum class PillButtonStyle : std::uint8_t { primary, quiet, plain };

/// Small buttons stand beside the controls of a row.
enum class PillButtonSize : std::uint8_t { regular, small };

enum class SymbolSide : std::uint8_t { leading, trailing };

/// As wide as its symbol and text need; 34 logical pixels high, or 26 when it is small. Space and
/// Return press it. Leave FocusRing::reach around it.
class PillButton : public QAbstractButton {
  public:
    PillButton(const QString& text, PillButtonStyle style, QWidget* parent = nullptr);
    PillButton(const QString& text, PillButtonStyle style, PillButtonSize size,
               QWidget* parent = nullptr);

    /// Draws the symbol beside the text.
    void setSymbol(Symbol symbol, SymbolSide side = SymbolSide::leading);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    double contentWidth() const;
    void paintContent(QPainter& painter, const QColor& color) const;

    PillButtonStyle style_;
    PillButtonSize size_;
    std::optional<Symbol> symbol_;
    SymbolSide symbolSide_ = SymbolSide::leading;
};

}  // namespace tessellon
