#include "onboarding/pointer_view.h"

#include "ui/palette.h"

#include <QPainterPath>
#include <QPen>
#include <QPolygonF>

namespace tessellon {

void paintPointer(QPainter& painter, const QPointF& tip, double height) {
    constexpr double drawnHeight = 29;
    QPainterPath arrow;
    arrow.addPolygon(QPolygonF(
        {{0, 0}, {0, 25}, {6.2, 19.6}, {10.4, 29}, {15.4, 26.8}, {11.3, 17.6}, {19.2, 17.2}}));
    arrow.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(tip);
    painter.scale(height / drawnHeight, height / drawnHeight);
    const QPen halo(palette::white, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.strokePath(arrow, halo);
    const QPen edge(palette::ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    painter.strokePath(arrow, edge);
    painter.fillPath(arrow, palette::ink);
    painter.restore();
}

}  // namespace tessellon
