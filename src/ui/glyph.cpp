#include "ui/glyph.h"

#include "ui/accessible_role.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <algorithm>
#include <array>

namespace tessellon {
namespace {

// The smallest size at which the mark is shown, so that its edges are whole pixels there.
constexpr double grid = 16;
constexpr double outline = 1.15;
constexpr double radius = 2.4;

struct Tile {
    QRectF rect;
    QColor color;
};

}  // namespace

void paintGlyph(QPainter& painter, const QRectF& rect) {
    const std::array<Tile, 3> tiles{{
        {QRectF(0, 0, 7.5, 16), palette::teal},
        {QRectF(8.5, 0, 7.5, 7.5), palette::amber},
        {QRectF(8.5, 8.5, 7.5, 7.5), palette::coral},
    }};
    const double scale = std::min(rect.width(), rect.height()) / grid;
    painter.save();
    painter.translate(rect.center());
    painter.scale(scale, scale);
    painter.translate(-grid / 2, -grid / 2);
    for (const Tile& tile : tiles) {
        paintRoundedRect(painter, tile.rect, radius, tile.color, {palette::ink, outline});
    }
    painter.restore();
}

QIcon glyphIcon() {
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128}) {
        QPixmap picture(size, size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        paintGlyph(painter, QRectF(0, 0, size, size));
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

Glyph::Glyph(int size, QWidget* parent) : QWidget(parent), size_(size) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleRole(*this, QAccessible::Graphic);
    setAccessibleName(QStringLiteral("Tessellon"));
}

void Glyph::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintGlyph(painter, rect());
}

}  // namespace tessellon
