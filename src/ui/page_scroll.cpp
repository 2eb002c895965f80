#include "ui/page_scroll.h"

#include <QApplication>

namespace tessellon {
namespace {

// Enough to see that a control belongs to a row, and what comes next.
constexpr int revealMargin = 56;
constexpr int wheelStep = 24;

}  // namespace

PageScroll::PageScroll(QWidget* parent) : QScrollArea(parent) {
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setVerticalScrollBar(new ScrollBar(this));
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
        const int before = verticalScrollBar()->value();
        ensureWidgetVisible(focused, 0, revealMargin);
        const int bottom = focused->mapTo(widget(), QPoint(0, focused->height())).y();
        // Back among the first controls, the page shows its title again.
        if (verticalScrollBar()->value() < before &&
            bottom + revealMargin <= viewport()->height()) {
            verticalScrollBar()->setValue(0);
        }
    }
}

}  // namespace tessellon
