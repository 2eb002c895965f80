#include "settings/page_scroll_view.h"

#include "ui/palette.h"
#include "ui/shapes.h"

#include <QApplication>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionSlider>

namespace tessellon {
namespace {

constexpr double thumbWidth = 6;
constexpr double restingOpacity = 0.4;
constexpr double heldOpacity = 0.8;
// Enough to see that a control belongs to a row, and what comes next.
constexpr int revealMargin = 56;
constexpr int wheelStep = 24;

// What the toolkit's own bar has besides its thumb has no place here.
constexpr auto barStyle = R"(
    QScrollBar:vertical { background: transparent; width: 12px; margin: 4px 0 4px 0; border: none; }
    QScrollBar::handle:vertical { min-height: 32px; }
    QScrollBar::add-line, QScrollBar::sub-line { height: 0; }
    QScrollBar::add-page, QScrollBar::sub-page { background: none; }
)";

/// A thumb without a groove; nothing while there is nothing to scroll.
class Bar : public QScrollBar {
  public:
    explicit Bar(QWidget* parent) : QScrollBar(Qt::Vertical, parent) {
        setStyleSheet(QLatin1String(barStyle));
        setAttribute(Qt::WA_Hover);
    }

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        if (minimum() == maximum()) {
            return;
        }
        QStyleOptionSlider option;
        initStyleOption(&option);
        QRectF thumb = style()->subControlRect(QStyle::CC_ScrollBar, &option,
                                               QStyle::SC_ScrollBarSlider, this);
        const double side = (thumb.width() - thumbWidth) / 2;
        thumb.adjust(side, 0, -side, 0);
        const double opacity = isSliderDown() || underMouse() ? heldOpacity : restingOpacity;
        QPainter painter(this);
        paintCapsule(painter, thumb, palette::withOpacity(palette::muted, opacity));
    }
};

}  // namespace

PageScroll::PageScroll(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBar(new Bar(this));
    verticalScrollBar()->setSingleStep(wheelStep);
    // By keyboard the controls are gone through, not what they lie on.
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget* /*old*/, QWidget* focused) { reveal(focused); });
}

void PageScroll::reveal(QWidget* focused) {
    // What was clicked is in view, and has to stay below the pointer.
    if (focused != nullptr && widget() != nullptr && widget()->isAncestorOf(focused) &&
        QApplication::mouseButtons() == Qt::NoButton) {
        ensureWidgetVisible(focused, 0, revealMargin);
    }
}

}  // namespace tessellon
