#include "ui/pill_slider.h"

#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/layer.h"
#include "ui/palette.h"
#include "ui/pill_slider_accessible.h"
#include "ui/shapes.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

constexpr double trackHeight = 8;
constexpr double knobSize = 22;
constexpr int preferredWidth = 160;
constexpr double stepsPerPage = 10;

double roundedToStep(double raw, double step) {
    return step > 0 ? std::round(raw / step) * step : raw;
}

}  // namespace

PillSlider::PillSlider(const QString& accessibleName, Range range, double step, const QColor& color,
                       QWidget* parent)
    : QWidget(parent), range_(range), step_(step), color_(color), value_(range.lower) {
    installPillSliderAccessibility();
    setAccessibleName(accessibleName);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    new FocusRing(*this, knobSize / 2);
}

void PillSlider::setValue(double value) {
    if (value == value_) {
        return;
    }
    value_ = value;
    update();
    QAccessibleValueChangeEvent changed(this, value);
    QAccessible::updateAccessibility(&changed);
}

void PillSlider::choose(double value) {
    const double upper = std::max(range_.lower, range_.upper);
    const double chosen = roundedToStep(std::clamp(value, range_.lower, upper), step_);
    if (chosen != value_) {
        setValue(chosen);
        valueChanged_.emit(chosen);
    }
}

QSize PillSlider::sizeHint() const {
    return {preferredWidth, static_cast<int>(knobSize)};
}

QSize PillSlider::minimumSizeHint() const {
    return {static_cast<int>(2 * knobSize), static_cast<int>(knobSize)};
}

double PillSlider::fraction() const {
    const double span = range_.upper - range_.lower;
    if (!(span > 0) || !std::isfinite(value_)) {
        return 0;
    }
    return std::clamp((value_ - range_.lower) / span, 0.0, 1.0);
}

double PillSlider::usableWidth() const {
    return std::max(width() - knobSize, 0.0);
}

void PillSlider::dragTo(double x) {
    const double fromStart = layoutDirection() == Qt::LeftToRight ? x : width() - x;
    double along = fromStart - knobSize / 2;
    if (const double usable = usableWidth(); usable > 1) {
        along /= usable;
    }
    choose(range_.lower + std::clamp(along, 0.0, 1.0) * (range_.upper - range_.lower));
}

void PillSlider::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const double opacity = isEnabled() ? 1 : control_style::disabledOpacity;
    paintLayer(painter, size(), opacity, [this](QPainter& layer) { draw(layer); });
}

void PillSlider::draw(QPainter& painter) const {
    if (layoutDirection() == Qt::RightToLeft) {
        painter.translate(width(), 0);
        painter.scale(-1, 1);
    }
    const Border border{palette::ink, control_style::outline};
    const double middle = height() / 2.0;
    const QRectF track(0, middle - trackHeight / 2, width(), trackHeight);
    const double knobLeft = fraction() * usableWidth();
    const QRectF knob(knobLeft, middle - knobSize / 2, knobSize, knobSize);
    paintCapsule(painter, track, palette::line, border);
    // The knob hides the end of the filled part.
    QRectF filled = track;
    filled.setRight(std::max(knob.center().x(), trackHeight));
    paintCapsule(painter, filled, color_, border);
    paintCapsule(painter, knob, palette::white, border);
}

void PillSlider::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    dragging_ = true;
    dragTo(event->position().x());
}

void PillSlider::mouseMoveEvent(QMouseEvent* event) {
    if (dragging_) {
        dragTo(event->position().x());
    }
}

void PillSlider::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        dragging_ = false;
    }
}

void PillSlider::keyPressEvent(QKeyEvent* event) {
    const double span = range_.upper - range_.lower;
    const double step = step_ > 0 ? step_ : span / 100;
    // A page is ten steps, but never more than a quarter of the way.
    const double page =
        std::max(step, std::min(step * stepsPerPage, roundedToStep(span / 4, step)));
    const double forward = layoutDirection() == Qt::LeftToRight ? step : -step;
    switch (event->key()) {
        case Qt::Key_Right:
            choose(value_ + forward);
            break;
        case Qt::Key_Left:
            choose(value_ - forward);
            break;
        case Qt::Key_Up:
            choose(value_ + step);
            break;
        case Qt::Key_Down:
            choose(value_ - step);
            break;
        case Qt::Key_PageUp:
            choose(value_ + page);
            break;
        case Qt::Key_PageDown:
            choose(value_ - page);
            break;
        case Qt::Key_Home:
            choose(range_.lower);
            break;
        case Qt::Key_End:
            choose(range_.upper);
            break;
        default:
            event->ignore();
            break;
    }
}

}  // namespace tessellon
