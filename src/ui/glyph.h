// The program's mark: three tiles of a screen.
#pragma once

#include <QPainter>
#include <QRectF>
#include <QWidget>

namespace tessellon {

/// Draws the mark as large as fits into the middle of `rect`.
void paintGlyph(QPainter& painter, const QRectF& rect);

class Glyph : public QWidget {
  public:
    /// `size` is the side of the mark in logical pixels.
    explicit Glyph(int size, QWidget* parent = nullptr);

    QSize sizeHint() const override { return {size_, size_}; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    int size_;
};

}  // namespace tessellon
