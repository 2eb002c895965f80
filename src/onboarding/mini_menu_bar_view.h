// A miniature menu bar that shows where the program's item is.
#pragma once

#include <QLabel>

namespace tessellon {

/// To assistive technology it is what its pointer says.
class MiniMenuBar : public QLabel {
  public:
    explicit MiniMenuBar(QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace tessellon
