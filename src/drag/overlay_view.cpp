#include "drag/overlay_view.h"

#include "engine/snap_action_names.h"
#include "ui/fonts.h"
#include "ui/key_chips.h"
#include "ui/mask.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/symbols.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

constexpr double cornerRadius = 18;
constexpr double borderWidth = 3;
constexpr int ringWidth = 6;  // the border with a light line inside it
constexpr double fillOpacity = 0.28;

/// A preview must be larger than this in both directions to have a label.
constexpr QSizeF largestWithoutLabel{260, 120};
constexpr double labelBottom = 28;
constexpr double labelPaddingX = 16;
constexpr double labelPaddingY = 9;
constexpr double labelBorder = 2;
constexpr double labelSpacing = 8;
constexpr QSizeF symbolFrame{32, 22};
constexpr double symbolSize = 18;   // the drawing of a 15 point symbol
constexpr double boldStroke = 2.6;  // of the symbol, in units of its grid
constexpr double titleSize = 20;
constexpr double smallestTitleScale = 0.7;
constexpr double leastTitleWidth = 40;
constexpr double chipSize = 22;

}  // namespace

struct OverlayView::Label {
    QRectF rect;  // empty: none
    FittedText title;
    double titleWidth = 0;
    QSizeF chips;
    double chipScale = 1;
};

OverlayView::OverlayView(Compositing& compositing)
    : PanelWindow(PanelLevel::preview, PanelInput::clickThrough, compositing) {}

void OverlayView::setAction(SnapAction action, const QString& shortcut) {
    const auto keys = onePerCharacter(shortcut);
    if (action == action_ && keys == keys_ && !title_.isEmpty()) {
        return;
    }
    action_ = action;
    keys_ = keys;
    title_ = QString::fromStdString(sentenceTitle(action));
    if (isVisible()) {
        updateShape();
        update();
    }
}

OverlayView::Label OverlayView::label() const {
    Label label;
    if (width() <= largestWithoutLabel.width() || height() <= largestWithoutLabel.height()) {
        return label;
    }
    double around = 2 * labelPaddingX + symbolFrame.width() + labelSpacing;
    const double widest = width() - 2 * borderWidth;
    if (!keys_.isEmpty()) {
        label.chips = keyChipsSize(keys_, chipSize);
        // Keys with long names leave the title its share.
        const double room = widest - around - labelSpacing - leastTitleWidth;
        label.chipScale = std::min(1.0, room / label.chips.width());
        label.chips *= label.chipScale;
        around += labelSpacing + label.chips.width();
    }
    label.title = fitText(title_, widest - around, titleSize, QFont::Bold, smallestTitleScale);
    label.titleWidth = std::ceil(textWidth(label.title.font, label.title.text));
    const double contentHeight = std::max(
        {symbolFrame.height(), label.chips.height(), std::ceil(lineHeight(label.title.font))});
    const double labelWidth = std::ceil(around + label.titleWidth);
    const double labelHeight = contentHeight + 2 * labelPaddingY;
    label.rect = QRectF(std::floor((width() - labelWidth) / 2),
                        height() - labelBottom - labelHeight, labelWidth, labelHeight);
    return label;
}

QRectF OverlayView::labelRect() const {
    return label().rect;
}

void OverlayView::updateShape() {
    if (backdrop() == Backdrop::translucent) {
        clearMask();
        return;
    }
    auto region = ringMask(rect(), cornerRadius, ringWidth);
    if (const auto pill = labelRect().toAlignedRect(); !pill.isEmpty()) {
        region += roundedMask(pill, pill.height() / 2.0);
    }
    setMask(region);
}

void OverlayView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRectF whole(rect());
    const auto pill = label();
    if (backdrop() == Backdrop::translucent) {
        paintRoundedRect(painter, whole, cornerRadius,
                         palette::withOpacity(palette::teal, fillOpacity),
                         {palette::ink, borderWidth});
    } else {
        paintRing(painter, rect(), cornerRadius, ringWidth,
                  {{palette::ink, borderWidth}, palette::teal});
        // The mask keeps pixels that the pill's border covers in part.
        painter.fillRect(pill.rect.toAlignedRect(), palette::ink);
    }
    if (!pill.rect.isEmpty()) {
        paintLabel(painter, pill);
    }
}

void OverlayView::paintLabel(QPainter& painter, const Label& label) const {
    paintCapsule(painter, label.rect, palette::paper, {palette::ink, labelBorder});
    const double middle = label.rect.center().y();
    double x = label.rect.left() + labelPaddingX;
    const QPointF symbolCenter(x + symbolFrame.width() / 2, middle);
    drawSymbol(painter, Symbol::sparkles,
               QRectF(symbolCenter - QPointF(symbolSize / 2, symbolSize / 2),
                      QSizeF(symbolSize, symbolSize)),
               palette::ink, boldStroke);
    x += symbolFrame.width() + labelSpacing;
    painter.setPen(palette::ink);
    painter.setFont(label.title.font);
    drawLine(painter, QRectF(x, label.rect.top(), label.titleWidth, label.rect.height()),
             label.title.text);
    x += label.titleWidth + labelSpacing;
    if (!keys_.isEmpty()) {
        painter.translate(x, std::round(middle - label.chips.height() / 2));
        painter.scale(label.chipScale, label.chipScale);
        paintKeyChips(painter, {0, 0}, keys_, chipSize);
    }
}

}  // namespace tessellon
