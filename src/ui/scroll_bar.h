// The bar at the edge of what scrolls.
#pragma once

#include <QScrollBar>

namespace tessellon {

/// A thumb without a groove; nothing while there is nothing to scroll.
class ScrollBar : public QScrollBar {
  public:
    explicit ScrollBar(QWidget* parent = nullptr);

    /// The room of the bar, in logical pixels.
    static constexpr int barWidth = 12;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tessellon
