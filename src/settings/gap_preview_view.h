// A picture of a screen that shows what the gaps look like.
#pragma once

#include <QRectF>
#include <QVariantAnimation>
#include <QWidget>

namespace tessellon {

class GapPreview : public QWidget {
  public:
    /// The gap between windows and the one at the edges, in points.
    GapPreview(double gap, double padding, QWidget* parent = nullptr);

    /// Moves to other gaps, in a moment; at once while it is hidden.
    void setGaps(double gap, double padding);

    /// Where the two windows are drawn now, in logical pixels of the picture.
    QRectF leftWindow() const;
    QRectF rightWindow() const;

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QRectF windowsArea() const;

    double gap_;
    double padding_;
    QVariantAnimation motion_;
};

}  // namespace tessellon
