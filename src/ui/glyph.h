// The program's mark: three tiles of a screen.
#pragma once

#include <QIcon>
#include <QPainter>
#include <QRectF>
#include <QWidget>

namespace tessellon {

/// Draws the mark as large as fits into the middle of `rect`.
void paintGlyph(QPainter& painter, const QRectF& rect);

/// The mark as the icon of a window, in the sizes that panels and window managers show.
QIcon glyphIcon();

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
