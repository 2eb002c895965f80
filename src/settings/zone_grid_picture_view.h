// A small picture of the zone grid on a screen, as decoration.
#pragma once

#include <QWidget>

namespace tessellon {

class ZoneGridPicture : public QWidget {
  public:
    explicit ZoneGridPicture(QWidget* parent = nullptr);

    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tessellon
