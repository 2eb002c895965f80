#include "ui/mini_screen.h"

#include "ui/accessible_role.h"
#include "ui/control_style.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/text.h"

#include <QPen>
#include <algorithm>
#include <array>

namespace tessellon {
namespace {

struct ZoneRow {
    SnapAction action;
    double x;
    double y;
    double width;
    double height;
};

constexpr double third = 1.0 / 3.0;

// Pictures, not geometry: what depends on a margin or on the window has a place of its own here.
constexpr std::array<ZoneRow, 17> zones{{
    {SnapAction::leftHalf, 0, 0, 0.5, 1},
    {SnapAction::rightHalf, 0.5, 0, 0.5, 1},
    {SnapAction::topHalf, 0, 0, 1, 0.5},
    {SnapAction::bottomHalf, 0, 0.5, 1, 0.5},
    {SnapAction::topLeft, 0, 0, 0.5, 0.5},
    {SnapAction::topRight, 0.5, 0, 0.5, 0.5},
    {SnapAction::bottomLeft, 0, 0.5, 0.5, 0.5},
    {SnapAction::bottomRight, 0.5, 0.5, 0.5, 0.5},
    {SnapAction::leftThird, 0, 0, third, 1},
    {SnapAction::centerThird, third, 0, third, 1},
    {SnapAction::rightThird, 2 * third, 0, third, 1},
    {SnapAction::leftTwoThirds, 0, 0, 2 * third, 1},
    {SnapAction::rightTwoThirds, third, 0, 2 * third, 1},
    {SnapAction::maximize, 0, 0, 1, 1},
    {SnapAction::almostMaximize, 0.12, 0.12, 0.76, 0.76},
    {SnapAction::center, 0.3, 0.3, 0.4, 0.4},
    {SnapAction::restore, 0.15, 0.35, 0.35, 0.35},
}};

double cornerRadius(const QRectF& picture) {
    return picture.height() * 0.16;
}

void paintScreen(QPainter& painter, const QRectF& rect, double radius, const QColor& fill) {
    paintRoundedRect(painter, rect, radius, fill, {palette::ink, control_style::outline});
}

// An arrow from the screen the window leaves to the one it goes to, which is filled.
void paintMove(QPainter& painter, const QRectF& rect, SnapAction action) {
    const bool forward = action == SnapAction::nextDisplay;
    const QColor to = palette::groupColor(action);
    const double width = rect.width() * 0.36;
    const double height = rect.height() * 0.6;
    const double top = rect.center().y() - height / 2;
    const QRectF left(rect.left(), top, width, height);
    const QRectF right(rect.right() - width, top, width, height);
    const double radius = cornerRadius(rect) * 0.8;
    paintScreen(painter, left, radius, forward ? palette::cream : to);
    paintScreen(painter, right, radius, forward ? to : palette::cream);

    const double room = right.left() - left.right();
    const double length = room * 0.56;
    const double head = length * 0.45;
    const double direction = forward ? 1 : -1;
    const QPointF tip = rect.center() + QPointF(direction * length / 2, 0);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(
        QPen(palette::ink, control_style::outline, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawLine(tip - QPointF(direction * length, 0), tip);
    painter.drawLine(tip - QPointF(direction * head, head), tip);
    painter.drawLine(tip - QPointF(direction * head, -head), tip);
    painter.restore();
}

}  // namespace

std::optional<QRectF> miniScreenZone(SnapAction action) {
    const auto row = std::ranges::find(zones, action, &ZoneRow::action);
    if (row == zones.end()) {
        return std::nullopt;
    }
    return QRectF(row->x, row->y, row->width, row->height);
}

void paintMiniScreen(QPainter& painter, const QRectF& rect, SnapAction action) {
    const auto zone = miniScreenZone(action);
    if (!zone) {
        paintMove(painter, rect, action);
        return;
    }
    const double radius = cornerRadius(rect);
    paintScreen(painter, rect, radius, palette::cream);
    const QRectF place(rect.left() + zone->x() * rect.width(),
                       rect.top() + zone->y() * rect.height(), zone->width() * rect.width(),
                       zone->height() * rect.height());
    paintScreen(painter, place, radius, palette::groupColor(action));
}

MiniScreen::MiniScreen(SnapAction action, const QSize& size, QWidget* parent)
    : QWidget(parent), action_(action), size_(size) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleRole(*this, QAccessible::Graphic);
    setAction(action);
}

void MiniScreen::setAction(SnapAction action) {
    action_ = action;
    setAccessibleName(toQString(title(action)));
    update();
}

void MiniScreen::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintMiniScreen(painter, rect(), action_);
}

}  // namespace tessellon
