#include "launcher/launcher_tile_view.h"

#include "engine/snap_action_names.h"
#include "ui/fonts.h"
#include "ui/key_chips.h"
#include "ui/mini_screen.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/text.h"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

constexpr double cornerRadius = 14;
constexpr double selectedOpacity = 0.5;
constexpr double restingOpacity = 0.2;
constexpr double selectedBorder = 2;
constexpr double focusInset = 4;

constexpr QSizeF pictureSize{46, 30};
constexpr double spacing = 6;
constexpr double labelSize = 11;
constexpr double labelMinimumScale = 0.8;
constexpr double keySize = 17;
// What is wider than the tile stays this far from its edges.
constexpr double sideMargin = 5;

double labelHeight() {
    return std::ceil(lineHeight(interfaceFont(labelSize, QFont::DemiBold)));
}

}  // namespace

LauncherTile::LauncherTile(SnapAction action, const QString& shortcut, QWidget* parent)
    : QAbstractButton(parent),
      action_(action),
      label_(toQString(shortTitle(action))),
      keys_(onePerCharacter(shortcut)) {
    resize(tileSize);
    setMouseTracking(true);
    // A click leaves the caret where it is.
    setFocusPolicy(Qt::TabFocus);
    const auto name = toQString(title(action));
    setAccessibleName(keys_.isEmpty() ? name : name + QStringLiteral(", ") + spokenKeys(keys_));
}

void LauncherTile::setSelected(bool selected) {
    if (selected_ == selected) {
        return;
    }
    selected_ = selected;
    setAccessibleDescription(selected ? QStringLiteral("Selected") : QString());
    update();
}

void LauncherTile::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRectF area(rect());
    const auto fill = palette::withOpacity(palette::groupColor(action_),
                                           selected_ ? selectedOpacity : restingOpacity);
    paintRoundedRect(painter, area, cornerRadius, fill,
                     selected_ ? Border{palette::ink, selectedBorder} : Border{});
    if (hasFocus()) {
        strokeBorder(painter, area.adjusted(focusInset, focusInset, -focusInset, -focusInset),
                     cornerRadius - focusInset, {palette::ink, 1});
    }

    // The column is centred as a whole; without a shortcut it is shorter.
    const double keysHeight = keys_.isEmpty() ? 0 : spacing + keySize;
    const double height = pictureSize.height() + spacing + labelHeight() + keysHeight;
    double top = std::floor((area.height() - height) / 2);
    paintMiniScreen(painter,
                    QRectF(QPointF((area.width() - pictureSize.width()) / 2, top), pictureSize),
                    action_);
    top += pictureSize.height() + spacing;

    const QRectF line(sideMargin, top, area.width() - 2 * sideMargin, labelHeight());
    const auto fitted =
        fitText(label_, line.width(), labelSize, QFont::DemiBold, labelMinimumScale);
    painter.setFont(fitted.font);
    painter.setPen(palette::ink);
    drawLine(painter, line, fitted.text);
    top += labelHeight() + spacing;

    paintKeys(painter, top);
}

void LauncherTile::paintKeys(QPainter& painter, double top) const {
    if (keys_.isEmpty()) {
        return;
    }
    const auto size = keyChipsSize(keys_, keySize);
    const double scale = std::min(1.0, (width() - 2 * sideMargin) / size.width());
    painter.save();
    // On whole pixels, so that the caps' edges are sharp.
    painter.translate(std::round((width() - size.width() * scale) / 2),
                      top + (size.height() - size.height() * scale) / 2);
    painter.scale(scale, scale);
    paintKeyChips(painter, {0, 0}, keys_, keySize);
    painter.restore();
}

void LauncherTile::mouseMoveEvent(QMouseEvent* event) {
    QAbstractButton::mouseMoveEvent(event);
    event->accept();  // it is no motion beside the tiles
    if (onPointerMoved) {
        onPointerMoved(event->globalPosition().toPoint());
    }
}

void LauncherTile::focusInEvent(QFocusEvent* event) {
    QAbstractButton::focusInEvent(event);
    if (onFocused) {
        onFocused();
    }
}

}  // namespace tessellon
