#include "ui/zone.h"

#include "ui/palette.h"
#include "ui/shapes.h"

#include <cmath>

namespace tessellon {
namespace {

QColor fillOf(double activity) {
    return palette::withOpacity(palette::teal, std::lerp(0.08, 0.3, activity));
}

Border borderOf(double activity) {
    return {palette::withOpacity(palette::ink, std::lerp(0.22, 0.8, activity)),
            std::lerp(1.0, 2.0, activity)};
}

}  // namespace

void paintZone(QPainter& painter, const QRectF& zone, double cornerRadius, double activity) {
    // One after the other: the fill goes on beneath the translucent border.
    paintRoundedRect(painter, zone, cornerRadius, fillOf(activity));
    strokeBorder(painter, zone, cornerRadius, borderOf(activity));
}

void setZone(QPainter& painter, const QRectF& zone, double cornerRadius, double activity) {
    setRoundedRect(painter, zone, cornerRadius, fillOf(activity), borderOf(activity));
}

}  // namespace tessellon
