#include "onboarding/task_picture_view.h"

#include "onboarding/pointer_view.h"
#include "ui/control_style.h"
#include "ui/mini_screen.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/symbols.h"

#include <QPainter>
#include <array>
#include <cstddef>

namespace tessellon {
namespace {

constexpr QSize pictureSize(96, 68);
constexpr double radius = 11;
constexpr double padding = 7;
constexpr double spacing = 4;

/// Fills the room with cells of a grid and returns the one that is asked for.
QRectF cellOf(const QRectF& room, int columns, int rows, int column, int row) {
    const double width = (room.width() - (columns - 1) * spacing) / columns;
    const double height = (room.height() - (rows - 1) * spacing) / rows;
    return {room.left() + column * (width + spacing), room.top() + row * (height + spacing), width,
            height};
}

/// The grid of zones with a pointer on one of them.
void drawZones(QPainter& painter, const QRectF& screen) {
    constexpr double zoneRadius = 5;
    paintRoundedRect(painter, screen, radius, palette::cream,
                     {palette::ink, control_style::outline});
    const QRectF room = screen.adjusted(padding, padding, -padding, -padding);
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 3; ++column) {
            const bool isAimed = column == 1 && row == 0;
            paintRoundedRect(painter, cellOf(room, 3, 2, column, row), zoneRadius,
                             isAimed ? palette::teal : palette::paper,
                             {isAimed ? palette::ink : palette::line, control_style::thinOutline});
        }
    }
    constexpr double pointerHeight = 27;
    paintPointer(painter, screen.center() + QPointF(1, -15), pointerHeight);
}

/// The launcher: a line to type in above a grid of tiles.
void drawLauncher(QPainter& painter, const QRectF& panel) {
    constexpr double fieldHeight = 15;
    constexpr double glassSize = 10;
    constexpr double tileRadius = 3.5;
    constexpr double outline = 1;
    constexpr int columns = 4;
    const std::array colors{palette::teal,     palette::teal, palette::amber,    palette::amber,
                            palette::lavender, palette::pink, palette::lavender, palette::pink};
    paintRoundedRect(painter, panel, radius, palette::paper,
                     {palette::ink, control_style::outline});
    const QRectF room = panel.adjusted(padding, padding, -padding, -padding);
    const QRectF field(room.topLeft(), QSizeF(room.width(), fieldHeight));
    paintRoundedRect(painter, field, fieldHeight / 2, palette::cream, {palette::line, outline});
    drawSymbol(painter, Symbol::magnifyingGlass,
               QRectF(field.left() + 4, field.center().y() - glassSize / 2, glassSize, glassSize),
               palette::muted, 3);
    const QRectF tiles = room.adjusted(0, fieldHeight + spacing, 0, 0);
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const int index = static_cast<int>(i);
        paintRoundedRect(painter, cellOf(tiles, columns, 2, index % columns, index / columns),
                         tileRadius, colors.at(i), {palette::ink, outline});
    }
}

}  // namespace

TaskPicture::TaskPicture(Tour::Event event, SnapAction action, QWidget* parent)
    : QWidget(parent), event_(event), action_(action) {
    setFixedSize(pictureSize);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void TaskPicture::setAction(SnapAction action) {
    action_ = action;
    update();
}

void TaskPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    switch (event_) {
        case Tour::Event::shortcut:
            paintMiniScreen(painter, rect(), action_);
            break;
        case Tour::Event::drag:
            drawZones(painter, rect());
            break;
        case Tour::Event::launcher:
            drawLauncher(painter, rect());
            break;
    }
}

}  // namespace tessellon
