// A small coloured capsule that names a state or counts something.
#pragma once

#include <QColor>
#include <QLabel>
#include <QPainter>
#include <QPointF>
#include <QSizeF>
#include <QString>
#include <cstdint>

namespace tessellon {

enum class ChipDot : std::uint8_t { none, leading };

/// The room a chip takes, in logical pixels.
QSizeF chipSize(const QString& text, ChipDot dot = ChipDot::none);

/// Draws a chip in that room; the dot stands before the text as `direction` reads.
void paintChip(QPainter& painter, const QPointF& topLeft, const QString& text, const QColor& color,
               ChipDot dot = ChipDot::none, Qt::LayoutDirection direction = Qt::LeftToRight);

/// The chip as a widget, dimmed while it is disabled; to assistive technology it is its text.
class Chip : public QLabel {
  public:
    Chip(const QString& text, const QColor& color, ChipDot dot = ChipDot::none,
         QWidget* parent = nullptr);

    void setColor(const QColor& color);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QColor color_;
    ChipDot dot_;
};

}  // namespace tessellon
