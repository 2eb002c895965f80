#include "settings/gap_preview_view.h"

#include "ui/accessible_role.h"
#include "ui/control_style.h"
#include "ui/easing.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <QPainter>
#include <QPointF>
#include <algorithm>

namespace tessellon {
namespace {

constexpr QSize pictureSize(170, 112);
constexpr double screenRadius = 9;
constexpr double windowRadius = 5;
constexpr double scale = 0.45;
constexpr double leastPadding = 2;
// Settings that were edited by hand may be larger than the picture: this much of a window stays.
constexpr double leastWindow = 10;
constexpr int duration = 120;  // milliseconds

constexpr double buttonSize = 4;
constexpr double buttonInset = 6;
constexpr double buttonOpacity = 0.45;

void paintWindow(QPainter& painter, const QRectF& frame, const QColor& color) {
    paintRoundedRect(painter, frame, windowRadius, color, {palette::ink, control_style::outline});
    const QColor buttons = palette::withOpacity(palette::ink, buttonOpacity);
    double left = frame.left() + buttonInset;
    for (int i = 0; i < 3 && left + buttonSize + buttonInset <= frame.right(); ++i) {
        paintCapsule(painter, QRectF(left, frame.top() + buttonInset, buttonSize, buttonSize),
                     buttons);
        left += buttonSize * 1.6;
    }
}

}  // namespace

GapPreview::GapPreview(double gap, double padding, QWidget* parent)
    : QWidget(parent), gap_(gap), padding_(padding) {
    setFixedSize(pictureSize);
    setAccessibleRole(*this, QAccessible::Graphic);
    motion_.setDuration(duration);
    motion_.setEasingCurve(easeOut());
    connect(&motion_, &QVariantAnimation::valueChanged, this, [this](const QVariant& value) {
        const auto gaps = value.toPointF();
        gap_ = gaps.x();
        padding_ = gaps.y();
        update();
    });
}

void GapPreview::setGaps(double gap, double padding) {
    motion_.stop();
    if (!isVisible()) {
        gap_ = gap;
        padding_ = padding;
        return;
    }
    motion_.setStartValue(QPointF(gap_, padding_));
    motion_.setEndValue(QPointF(gap, padding));
    motion_.start();
}

QRectF GapPreview::windowsArea() const {
    const double most = pictureSize.height() / 2.0 - leastWindow;
    const double inset = std::clamp(padding_ * scale, leastPadding, most);
    return QRectF(QPointF(0, 0), pictureSize).adjusted(inset, inset, -inset, -inset);
}

QRectF GapPreview::leftWindow() const {
    const QRectF area = windowsArea();
    const double gap = std::clamp(gap_ * scale, 0.0, area.width() - 2 * leastWindow);
    return {area.topLeft(), QSizeF((area.width() - gap) / 2, area.height())};
}

QRectF GapPreview::rightWindow() const {
    QRectF frame = leftWindow();
    frame.moveRight(windowsArea().right());
    return frame;
}

QSize GapPreview::sizeHint() const {
    return pictureSize;
}

void GapPreview::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintRoundedRect(painter, rect(), screenRadius, palette::paper,
                     {palette::ink, control_style::outline});
    paintWindow(painter, leftWindow(), palette::teal);
    paintWindow(painter, rightWindow(), palette::amber);
}

}  // namespace tessellon
