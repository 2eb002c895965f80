#include "ui/pill_toggle.h"

#include "ui/accessible_button.h"
#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/layer.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <QPainter>

namespace tessellon {
namespace {

constexpr QSize pillSize(40, 24);
constexpr double knobInset = 3;
constexpr double knobSize = pillSize.height() - 2 * knobInset;

}  // namespace

PillToggle::PillToggle(const QString& accessibleName, QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setAccessibleName(accessibleName);
    setAccessibleByClick(*this);
    setFocusPolicy(Qt::StrongFocus);
    setFixedSize(PillToggle::sizeHint());
    new FocusRing(*this, pillSize.height() / 2.0);
}

QSize PillToggle::sizeHint() const {
    return pillSize;
}

void PillToggle::paintEvent(QPaintEvent* /*event*/) {
    QPainter widgetPainter(this);
    const double opacity = isEnabled() ? 1 : control_style::disabledOpacity;
    paintLayer(widgetPainter, rect().size(), opacity, [this](QPainter& painter) {
        const QRectF all = rect();
        const Border border{palette::ink, control_style::outline};
        paintCapsule(painter, all, isChecked() ? palette::teal : palette::line, border);
        const bool atRight = isChecked() == (layoutDirection() == Qt::LeftToRight);
        const double left = atRight ? all.right() - knobInset - knobSize : all.left() + knobInset;
        paintCapsule(painter, QRectF(left, all.top() + knobInset, knobSize, knobSize),
                     palette::white, border);
    });
}

}  // namespace tessellon
