#include "settings/flow_view.h"

#include <QLayoutItem>
#include <QStyle>
#include <QWidget>
#include <algorithm>
#include <limits>

namespace tessellon {

Flow::Flow(int spacing, QWidget* parent) : QLayout(parent) {
    setSpacing(spacing);
    setContentsMargins(0, 0, 0, 0);
}

Flow::~Flow() {
    qDeleteAll(items_);
}

void Flow::addItem(QLayoutItem* item) {
    items_.append(item);
}

int Flow::count() const {
    return static_cast<int>(items_.size());
}

QLayoutItem* Flow::itemAt(int index) const {
    return items_.value(index);
}

QLayoutItem* Flow::takeAt(int index) {
    return index >= 0 && index < count() ? items_.takeAt(index) : nullptr;
}

void Flow::forEachPlaced(int width, const Place& place) const {
    int x = 0;
    int y = 0;
    int lineHeight = 0;
    bool lineHoldsItem = false;
    for (auto* const item : items_) {
        if (item->isEmpty()) {
            continue;  // hidden
        }
        const QSize size = item->sizeHint();
        if (lineHoldsItem && size.width() > width - x) {
            x = 0;
            y += lineHeight + spacing();
            lineHeight = 0;
        }
        place(*item, QRect(QPoint(x, y), size));
        x += size.width() + spacing();
        lineHeight = std::max(lineHeight, size.height());
        lineHoldsItem = true;
    }
}

QSize Flow::sizeFor(int width) const {
    QSize end(0, 0);
    forEachPlaced(width, [&end](QLayoutItem& /*item*/, const QRect& frame) {
        end = {frame.x() + frame.width(), frame.y() + frame.height()};
    });
    return end;
}

int Flow::heightForWidth(int width) const {
    const QMargins margins = contentsMargins();
    return sizeFor(width - margins.left() - margins.right()).height() + margins.top() +
           margins.bottom();
}

QSize Flow::sizeHint() const {
    return sizeFor(std::numeric_limits<int>::max()).grownBy(contentsMargins());
}

QSize Flow::minimumSize() const {
    // One item below the other; how high that is depends on the width.
    QSize widest(0, 0);
    for (const auto* const item : items_) {
        if (!item->isEmpty()) {
            widest = widest.expandedTo(item->minimumSize());
        }
    }
    return widest.grownBy(contentsMargins());
}

void Flow::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    const QRect inside = rect.marginsRemoved(contentsMargins());
    const auto direction =
        parentWidget() != nullptr ? parentWidget()->layoutDirection() : Qt::LeftToRight;
    forEachPlaced(inside.width(), [&](QLayoutItem& item, const QRect& frame) {
        item.setGeometry(QStyle::visualRect(direction, inside, frame.translated(inside.topLeft())));
    });
}

}  // namespace tessellon
