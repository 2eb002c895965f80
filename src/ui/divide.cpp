#include "ui/divide.h"

#include "ui/focus_ring.h"
#include "ui/palette.h"

#include <QPainter>

namespace tessellon {

Divide::Divide(QWidget* parent) : QWidget(parent) {
    setFixedHeight(1);
}

void Divide::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    // As far as the texts and controls of the rows, which keep clear of the rings.
    painter.fillRect(rect().adjusted(FocusRing::reach, 0, -FocusRing::reach, 0), palette::line);
}

}  // namespace tessellon
