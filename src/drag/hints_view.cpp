#include "drag/hints_view.h"

#include "engine/snap_action_names.h"
#include "ui/easing.h"
#include "ui/fonts.h"
#include "ui/mask.h"
#include "ui/mini_screen.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/zone.h"

#include <QImage>
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <utility>

namespace tessellon {
namespace {

constexpr double cornerRadius = 14;
constexpr int animationMilliseconds = 120;

// The label lies on a card that keeps a distance from the zone's edge.
using zone_label::pictureSize;
constexpr double labelPaddingX = 6;
constexpr double labelPaddingY = 5;
constexpr double labelMargin = 4;
constexpr double labelRadius = 9;

// Without a compositor nothing but outlines and labels can be shown, and they have to be seen on
// any background: light and dark side by side.
constexpr int ringWidth = 4;  // a light line of one pixel would thin out in the corners
constexpr int activeRingWidth = 7;
constexpr double ringLine = 2;

/// A zone on whole pixels, where its border is sharp.
QRectF snapped(const Rect& zone, double ratio) {
    const double left = std::round(zone.minX());
    const double top = std::round(zone.minY());
    return {left / ratio, top / ratio, (std::round(zone.maxX()) - left) / ratio,
            (std::round(zone.maxY()) - top) / ratio};
}

QRectF labelRect(const QRectF& cell, const QSizeF& size) {
    // On whole pixels, where the prepared picture stays sharp.
    const QPointF center = cell.center();
    const QPointF topLeft(std::round(center.x() - size.width() / 2),
                          std::round(center.y() - size.height() / 2));
    return {topLeft, size};
}

}  // namespace

HintsView::HintsView(Compositing& compositing)
    : PanelWindow(PanelLevel::grid, PanelInput::clickThrough, compositing), animation_(this) {
    animation_.setStartValue(0.0);
    animation_.setEndValue(1.0);
    animation_.setDuration(animationMilliseconds);
    animation_.setEasingCurve(easeOut());
    connect(&animation_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& value) { advance(value.toDouble()); });
}

void HintsView::setHints(std::vector<Hint> hints) {
    animation_.stop();
    active_.reset();
    if (hints != hints_) {
        hints_ = std::move(hints);
        laidOutFor_ = 0;
    }
    for (auto& cell : cells_) {
        cell.activity = cell.from = cell.to = 0;
    }
    if (isVisible()) {
        updateShape();
        update();
    }
}

void HintsView::setActive(std::optional<SnapAction> action) {
    if (action == active_) {
        return;
    }
    active_ = action;
    for (auto& cell : cells_) {
        cell.from = cell.activity;
        cell.to = isActive(cell) ? 1 : 0;
    }
    animation_.stop();
    if (isVisible() && backdrop() == Backdrop::translucent) {
        animation_.start();
        return;
    }
    advance(1);
    if (isVisible()) {
        updateShape();
    }
}

void HintsView::advance(double progress) {
    QRegion changed;
    for (auto& cell : cells_) {
        if (cell.activity != cell.to) {
            cell.activity = progress < 1 ? std::lerp(cell.from, cell.to, progress) : cell.to;
            changed += cell.rect.toAlignedRect();
        }
    }
    if (!changed.isEmpty()) {
        update(changed);
    }
}

void HintsView::hideEvent(QHideEvent* event) {
    PanelWindow::hideEvent(event);
    animation_.stop();
    advance(1);
}

void HintsView::layOut() {
    const double ratio = devicePixelRatioF();
    if (laidOutFor_ == ratio) {
        return;
    }
    laidOutFor_ = ratio;
    cells_.clear();
    cells_.reserve(hints_.size());
    for (const auto& hint : hints_) {
        Cell cell{hint.action, snapped(hint.rect, ratio), {}, {}};
        cell.activity = cell.from = cell.to = isActive(cell) ? 1 : 0;
        drawLabel(cell);
        cells_.push_back(std::move(cell));
    }
}

void HintsView::drawLabel(Cell& cell) const {
    const double widest = cell.rect.width() - 2 * (labelMargin + labelPaddingX);
    const auto name = fitText(QString::fromStdString(shortTitle(cell.action)), widest,
                              zone_label::nameSize, QFont::DemiBold, zone_label::smallestNameScale);
    const double nameWidth = std::ceil(textWidth(name.font, name.text));
    const double nameHeight = std::ceil(lineHeight(name.font));
    const double width = std::max(pictureSize.width(), nameWidth) + 2 * labelPaddingX;
    const double height =
        pictureSize.height() + zone_label::spacing + nameHeight + 2 * labelPaddingY;
    cell.labelSize = {width, height};

    const double ratio = devicePixelRatioF();
    QPixmap label((cell.labelSize * ratio).toSize());
    label.setDevicePixelRatio(ratio);
    label.fill(Qt::transparent);
    QPainter painter(&label);
    const QPointF picture(std::floor((width - pictureSize.width()) / 2), labelPaddingY);
    paintMiniScreen(painter, QRectF(picture, pictureSize), cell.action);
    painter.setFont(name.font);
    painter.setPen(palette::ink);
    const double nameTop = labelPaddingY + pictureSize.height() + zone_label::spacing;
    drawLine(painter, QRectF(0, nameTop, width, nameHeight), name.text);
    painter.end();
    cell.label = std::move(label);
}

int HintsView::hollowWidth(const Cell& cell) const {
    return isActive(cell) ? activeRingWidth : ringWidth;
}

QRegion HintsView::outline(const Cell& cell) const {
    const auto label = labelRect(cell.rect, cell.labelSize).intersected(cell.rect);
    return ringMask(cell.rect.toAlignedRect(), cornerRadius, hollowWidth(cell)) +
           roundedMask(label.toAlignedRect(), labelRadius);
}

void HintsView::updateShape() {
    layOut();
    if (backdrop() == Backdrop::translucent) {
        clearMask();
        return;
    }
    QRegion region;
    for (const auto& cell : cells_) {
        region += outline(cell);
    }
    setMask(region);
}

void HintsView::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    for (const auto& cell : cells_) {
        if (!event->region().intersects(cell.rect.toAlignedRect())) {
            continue;
        }
        if (backdrop() == Backdrop::translucent) {
            paintCell(painter, cell);
        } else {
            paintHollowCell(painter, cell);
        }
    }
}

void HintsView::paintCell(QPainter& painter, const Cell& cell) const {
    setZone(painter, cell.rect, cornerRadius, cell.activity);
    paintLabel(painter, cell,
               palette::withOpacity(palette::paper, std::lerp(0.85, 1.0, cell.activity)),
               std::lerp(0.8, 1.0, cell.activity));
}

void HintsView::paintHollowCell(QPainter& painter, const Cell& cell) const {
    const auto& light = isActive(cell) ? palette::teal : palette::paper;
    paintRing(painter, cell.rect.toAlignedRect(), cornerRadius, hollowWidth(cell),
              {{palette::ink, ringLine}, light});
    // The mask keeps pixels that the card covers in part.
    const auto label = labelRect(cell.rect, cell.labelSize).intersected(cell.rect);
    painter.fillRect(label.toAlignedRect(), light);
    paintLabel(painter, cell, light, 1);
}

void HintsView::paintLabel(QPainter& painter, const Cell& cell, const QColor& background,
                           double opacity) const {
    // Card and content fade as one, so they are put together before.
    QImage card(cell.label.size(), QImage::Format_ARGB32_Premultiplied);
    card.setDevicePixelRatio(cell.label.devicePixelRatio());
    card.fill(Qt::transparent);
    QPainter onCard(&card);
    paintRoundedRect(onCard, QRectF(QPointF(), cell.labelSize), labelRadius, background);
    onCard.drawPixmap(QPointF(), cell.label);
    onCard.end();

    painter.save();
    painter.setClipRect(cell.rect, Qt::IntersectClip);
    painter.setOpacity(opacity);
    painter.drawImage(labelRect(cell.rect, cell.labelSize).topLeft(), card);
    painter.restore();
}

}  // namespace tessellon
