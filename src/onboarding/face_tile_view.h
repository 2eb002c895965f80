// The friendly face that greets the user in the steps of the tour.
#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QWidget>
#include <cstdint>

namespace tessellon {

/// Whether the face has rosy cheeks.
enum class Blush : std::uint8_t { none, rosy };

/// Draws eyes, mouth and cheeks as large as fits into the middle of `rect`.
void paintFace(QPainter& painter, const QRectF& rect, Blush blush);

/// A tile of 82 × 64 logical pixels; assistive technology passes over it.
class FaceTile : public QWidget {
  public:
    static constexpr QSize tileSize{82, 64};

    FaceTile(const QColor& color, Blush blush, QWidget* parent = nullptr);

    void setFace(const QColor& color, Blush blush);
    QSize sizeHint() const override { return tileSize; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QColor color_;
    Blush blush_;
};

}  // namespace tessellon
