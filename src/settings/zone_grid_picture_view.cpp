#include "settings/zone_grid_picture_view.h"

#include "drag/zone_hints.h"
#include "engine/snap_action_names.h"
#include "ui/control_style.h"
#include "ui/fonts.h"
#include "ui/mini_screen.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/zone.h"

#include <QPainter>

namespace tessellon {
namespace {

// The screen, and what its edge keeps from the grid.
constexpr QSize preferredSize{480, 300};
constexpr double screenRadius = 16;
constexpr double screenInset = 5;

constexpr double zoneRadius = 9;
constexpr SnapAction activeZone = SnapAction::leftHalf;
constexpr double nameMargin = 4;

void paintLabeledZone(QPainter& painter, const QRectF& zone, SnapAction action) {
    using namespace zone_label;
    paintZone(painter, zone, zoneRadius, action == activeZone ? 1 : 0);
    const auto name =
        fitText(QString::fromStdString(shortTitle(action)), zone.width() - 2 * nameMargin, nameSize,
                QFont::DemiBold, smallestNameScale);
    // The same for all, so that the pictures of a row are level.
    const double nameHeight = lineHeight(interfaceFont(nameSize, QFont::DemiBold));
    QRectF picture(QPointF(), pictureSize);
    picture.moveCenter(zone.center());
    picture.translate(0, -(spacing + nameHeight) / 2);
    paintMiniScreen(painter, picture, action);
    painter.setFont(name.font);
    painter.setPen(palette::ink);
    drawLine(painter, QRectF(zone.left(), picture.bottom() + spacing, zone.width(), nameHeight),
             name.text);
}

}  // namespace

ZoneGridPicture::ZoneGridPicture(QWidget* parent) : QWidget(parent) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QSize ZoneGridPicture::sizeHint() const {
    return preferredSize;
}

void ZoneGridPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QRectF screen = rect();
    paintRoundedRect(painter, screen, screenRadius, palette::paper,
                     {palette::ink, control_style::outline});
    const auto grid = screen.adjusted(screenInset, screenInset, -screenInset, -screenInset);
    Screen pictured;
    pictured.visibleFrame = {0, 0, grid.width(), grid.height()};
    for (const auto& hint : ZoneHints::layout(pictured)) {
        const QRectF zone(hint.rect.x, hint.rect.y, hint.rect.width, hint.rect.height);
        paintLabeledZone(painter, zone.translated(grid.topLeft()), hint.action);
    }
}

}  // namespace tessellon
