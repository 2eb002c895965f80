#include "ui/zone.h"

#include "ui/palette.h"
#include "ui/shapes.h"

#include <cmath>

namespace tessellon {

void paintZone(QPainter& painter, const QRectF& zone, double cornerRadius, double activity) {
    const auto value = [activity](double inactive, double active) {
        return std::lerp(inactive, active, activity);
    };
    // One after the other: the fill goes on beneath the translucent border.
    paintRoundedRect(painter, zone, cornerRadius,
                     palette::withOpacity(palette::teal, value(0.08, 0.3)));
    strokeBorder(painter, zone, cornerRadius,
                 {palette::withOpacity(palette::ink, value(0.22, 0.8)), value(1, 2)});
}

}  // namespace tessellon
