#include "ui/dot.h"

#include "ui/control_style.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <QPainter>

namespace tessellon {
Dot::Dot(int size, const QColor& color, QWidget* parent) : QWidget(parent), color_(color) {
    setFixedSize(size, size);
}

void Dot::setColor(const QColor& color) {
    color_ = color;
    update();
}

void Dot::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintCapsule(painter, rect(), color_, {palette::ink, control_style::thinOutline});
}

}  // namespace tessellon
