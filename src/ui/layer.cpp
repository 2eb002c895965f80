#include "ui/layer.h"

#include <QPixmap>
#include <QTransform>
#include <cmath>

namespace tessellon {

void paintLayer(QPainter& painter, const QSize& size, double opacity,
                const std::function<void(QPainter&)>& draw) {
    if (opacity >= 1) {
        draw(painter);
        return;
    }
    // Device pixels for each logical one, whatever the painter draws on.
    const QTransform transform = painter.deviceTransform();
    const double ratio = std::hypot(transform.m11(), transform.m12());
    QPixmap picture((QSizeF(size) * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    {
        QPainter onPicture(&picture);
        draw(onPicture);
    }
    painter.save();
    painter.setOpacity(painter.opacity() * opacity);
    painter.drawPixmap(0, 0, picture);
    painter.restore();
}

}  // namespace tessellon
