#include "ui/layer.h"

#include <QPaintDevice>
#include <QPixmap>

namespace tessellon {

void paintLayer(QPainter& painter, const QSize& size, double opacity,
                const std::function<void(QPainter&)>& draw) {
    if (opacity >= 1) {
        draw(painter);
        return;
    }
    const double ratio = painter.device()->devicePixelRatioF();
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
