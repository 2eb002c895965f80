// A round spot of color beside a text.
#pragma once

#include <QColor>
#include <QWidget>

namespace tessellon {

class Dot : public QWidget {
  public:
    /// `size` is its width in logical pixels.
    Dot(int size, const QColor& color, QWidget* parent = nullptr);

    const QColor& color() const { return color_; }
    void setColor(const QColor& color);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QColor color_;
};

}  // namespace tessellon
