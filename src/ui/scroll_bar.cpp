#include "ui/scroll_bar.h"

#include "ui/palette.h"
#include "ui/shapes.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

namespace tessellon {
namespace {

constexpr double thumbWidth = 6;
constexpr double restingOpacity = 0.4;
constexpr double heldOpacity = 0.8;

// What the toolkit's own bar has besides its thumb has no place here.
constexpr auto barStyle = R"(
    QScrollBar:vertical { background: transparent; width: 12px; margin: 4px 0 4px 0; border: none; }
    QScrollBar::handle:vertical { min-height: 32px; }
    QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
    QScrollBar::add-page, QScrollBar::sub-page { background: none; }
)";

}  // namespace

ScrollBar::ScrollBar(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {
    setStyleSheet(QLatin1String(barStyle));
    setAttribute(Qt::WA_Hover);
}

void ScrollBar::paintEvent(QPaintEvent* /*event*/) {
    if (minimum() == maximum()) {
        return;
    }
    QStyleOptionSlider option;
    initStyleOption(&option);
    QRectF thumb =
        style()->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider, this);
    const double side = (thumb.width() - thumbWidth) / 2;
    thumb.adjust(side, 0, -side, 0);
    const double opacity = isSliderDown() || underMouse() ? heldOpacity : restingOpacity;
    QPainter painter(this);
    paintCapsule(painter, thumb, palette::withOpacity(palette::muted, opacity));
}

}  // namespace tessellon
