// The thin line between two rows.
#pragma once

#include <QWidget>

namespace tessellon {

class Divide : public QWidget {
  public:
    explicit Divide(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tessellon
