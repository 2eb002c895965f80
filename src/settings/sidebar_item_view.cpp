#include "settings/sidebar_item_view.h"

#include "ui/accessible_button.h"
#include "ui/control_style.h"
#include "ui/focus_ring.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/symbols.h"
#include "ui/text.h"

#include <QKeyEvent>
#include <QPainter>
#include <algorithm>

namespace tessellon {
namespace {

constexpr int itemHeight = 38;
constexpr int preferredWidth = 200;
constexpr double radius = 11;
constexpr double sidePadding = 12;
constexpr double symbolSize = 18;
constexpr double symbolSpacing = 10;
constexpr double fontSize = 14;
constexpr double countSize = 11;
constexpr double countPadding = 7;
constexpr double countHeight = 18;
constexpr double hoverShade = 0.05;
constexpr double pressedShade = 0.1;

Symbol symbolOf(SettingsPage page) {
    switch (page) {
        case SettingsPage::general:
            return Symbol::sliderHorizontal3;
        case SettingsPage::zones:
            return Symbol::squareGrid2x2;
        case SettingsPage::shortcuts:
            return Symbol::keyboard;
        case SettingsPage::arrangements:
            return Symbol::rectangle3Group;
        case SettingsPage::rules:
            return Symbol::line3HorizontalDecrease;
        case SettingsPage::displays:
            return Symbol::display2;
        case SettingsPage::about:
            break;
    }
    return Symbol::pawprint;
}

}  // namespace

SidebarItem::SidebarItem(SettingsPage page, QWidget* parent)
    : QAbstractButton(parent), page_(page) {
    setText(toQString(title(page)));
    setCheckable(true);
    setAutoExclusive(true);
    setAccessibleByClick(*this);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    new FocusRing(*this, radius);
}

void SidebarItem::setCount(int count, const QString& description) {
    count_ = QString::number(count);
    setAccessibleDescription(description);
    update();
}

QSize SidebarItem::sizeHint() const {
    return {preferredWidth, itemHeight};
}

void SidebarItem::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRectF all = rect();
    const auto mirrored = [&](const QRectF& frame) {
        return layoutDirection() == Qt::LeftToRight
                   ? frame
                   : QRectF(all.right() - frame.right(), frame.top(), frame.width(),
                            frame.height());
    };
    if (isChecked()) {
        paintRoundedRect(painter, all, radius, palette::amber,
                         {palette::ink, control_style::outline});
    } else if (isDown() || underMouse()) {
        paintRoundedRect(painter, all, radius,
                         palette::withOpacity(palette::ink, isDown() ? pressedShade : hoverShade));
    }
    const double middle = all.center().y();
    const QRectF symbol(sidePadding, middle - symbolSize / 2, symbolSize, symbolSize);
    drawSymbol(painter, symbolOf(page_), mirrored(symbol), palette::ink);

    double textEnd = all.right() - sidePadding;
    painter.setPen(palette::ink);
    if (!count_.isEmpty()) {
        const QFont font = interfaceFont(countSize, QFont::DemiBold);
        const double width = std::max(textWidth(font, count_) + 2 * countPadding, countHeight);
        const QRectF frame(textEnd - width, middle - countHeight / 2, width, countHeight);
        paintCapsule(painter, mirrored(frame), isChecked() ? palette::paper : palette::line);
        painter.setFont(font);
        drawLine(painter, mirrored(frame), count_);
        textEnd = frame.left() - symbolSpacing;
    }
    const double textStart = symbol.right() + symbolSpacing;
    const QRectF textFrame(textStart, 0, textEnd - textStart, all.height());
    const auto fitted = fitText(text(), textFrame.width(), fontSize, QFont::Medium, 0.8);
    painter.setFont(fitted.font);
    drawLine(painter, mirrored(textFrame), fitted.text,
             layoutDirection() == Qt::LeftToRight ? Qt::AlignLeft : Qt::AlignRight);
}

void SidebarItem::keyPressEvent(QKeyEvent* event) {
    const int step = event->key() == Qt::Key_Down ? 1 : event->key() == Qt::Key_Up ? -1 : 0;
    if (step == 0 && event->key() != Qt::Key_Home && event->key() != Qt::Key_End) {
        QAbstractButton::keyPressEvent(event);
        return;
    }
    QList<SidebarItem*> items;
    for (auto* const sibling : parentWidget()->children()) {
        if (auto* const item = dynamic_cast<SidebarItem*>(sibling)) {
            items.append(item);
        }
    }
    const auto last = items.size() - 1;
    auto place = items.indexOf(this) + step;
    if (step == 0) {
        place = event->key() == Qt::Key_Home ? 0 : last;
    }
    auto* const next = items[std::clamp<qsizetype>(place, 0, last)];
    next->setFocus(Qt::TabFocusReason);
    if (!next->isChecked()) {
        next->click();
    }
}

}  // namespace tessellon
