#include "ui/easing.h"

#include <QPointF>

namespace tessellon {

QEasingCurve easeOut() {
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment({0, 0}, {0.58, 1}, {1, 1});
    return curve;
}

}  // namespace tessellon
