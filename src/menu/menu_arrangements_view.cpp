#include "menu/menu_arrangements_view.h"

#include "menu/menu_label_view.h"
#include "shortcuts/key_labels.h"
#include "ui/fonts.h"
#include "ui/key_chips.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/symbols.h"
#include "ui/text.h"

#include <QPainter>
#include <algorithm>

namespace tessellon {
namespace {

constexpr int spacing = 6;
constexpr double headingSize = 12;

constexpr int rowHeight = 27;
constexpr double rowRadius = 9;
constexpr int rowSidePadding = 8;
constexpr int rowSpacing = 6;
// The line drawing in the room of a letter of 12 points with its sides.
constexpr double symbolSize = 15;
constexpr double symbolStrokeWidth = 2.4;
constexpr double nameSize = 12.5;
constexpr double keySize = 17;
// Labels are stored text of any length.
constexpr double keyLabelMaxWidth = 64;

QStringList keysOf(const Arrangement& arrangement) {
    QStringList keys;
    // A negative key code stands for a shortcut that was taken away.
    if (arrangement.combo && arrangement.combo->keyCode >= 0) {
        for (const auto& key : displayKeys(*arrangement.combo)) {
            keys.append(fitText(singleLine(key), keyLabelMaxWidth, keyChipsFontSize(keySize),
                                QFont::DemiBold, 1)
                            .text);
        }
    }
    return keys;
}

}  // namespace

MenuArrangementRow::MenuArrangementRow(const Arrangement& arrangement, QWidget* parent)
    : MenuButton(singleLine(arrangement.name), rowRadius, parent),
      name_(singleLine(arrangement.name)),
      keys_(keysOf(arrangement)) {
    setAccessibleDescription(keys_.isEmpty()
                                 ? QStringLiteral("Applies the arrangement")
                                 : QStringLiteral("Applies the arrangement, ") + spokenKeys(keys_));
    resize(MenuArrangementRow::sizeHint());
}

QSize MenuArrangementRow::sizeHint() const {
    return {MenuSection::contentWidth, rowHeight};
}

void MenuArrangementRow::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintRoundedRect(painter, QRectF(rect()), rowRadius, palette::cream);
    paintGround(painter);

    QRectF line = QRectF(rect()).adjusted(rowSidePadding, 0, -rowSidePadding, 0);
    drawSymbol(painter, Symbol::rectangle3Group,
               QRectF(line.left(), (rowHeight - symbolSize) / 2, symbolSize, symbolSize),
               palette::ink, symbolStrokeWidth);
    line.setLeft(line.left() + symbolSize + rowSpacing);

    if (!keys_.isEmpty()) {
        const QSizeF size = keyChipsSize(keys_, keySize);
        const double left = std::floor(line.right() - size.width());
        paintKeyChips(painter, QPointF(left, (rowHeight - keySize) / 2), keys_, keySize);
        line.setRight(left - rowSpacing);
    }
    const auto fitted = fitText(name_, line.width(), nameSize, QFont::Medium, 1);
    painter.setFont(fitted.font);
    painter.setPen(palette::ink);
    drawLine(painter, line, fitted.text, Qt::AlignLeft);
}

MenuArrangements::MenuArrangements(const std::vector<Arrangement>& arrangements,
                                   const Callbacks& callbacks, QWidget* parent)
    : MenuSection(parent) {
    auto* const save = new MenuTextButton(QStringLiteral("Save current"), this);
    save->setSymbol(Symbol::plus);
    save->setAccessibleDescription(QStringLiteral("Saves the windows as an arrangement"));
    save->move(origin().x() + contentWidth + MenuTextButton::overhang - save->width(),
               origin().y());
    connect(save, &QAbstractButton::clicked, this, callbacks.save);
    addRow({save});

    auto* const heading = new MenuLabel(QStringLiteral("Arrangements"),
                                        {headingSize, QFont::DemiBold, palette::muted}, this);
    heading->setGeometry(origin().x(), origin().y(), heading->width(), save->height());

    int bottom = save->height();
    const auto count = std::min(arrangements.size(), mostRows);
    for (std::size_t i = 0; i < count; ++i) {
        const auto& arrangement = arrangements[i];
        auto* const row = new MenuArrangementRow(arrangement, this);
        row->move(origin() + QPoint(0, bottom + spacing));
        bottom += spacing + row->height();
        connect(row, &QAbstractButton::clicked, this,
                [apply = callbacks.apply, arrangement] { apply(arrangement); });
        addRow({row});
    }
    setContentHeight(bottom);
}

}  // namespace tessellon
