// The picture on the first step of the tour: a window that is dragged onto a zone of a screen.
#pragma once

#include <QWidget>

namespace tessellon {

/// Keeps its proportions in whatever room it is given; assistive technology passes over it.
class SnappingPicture : public QWidget {
  public:
    explicit SnappingPicture(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tessellon
