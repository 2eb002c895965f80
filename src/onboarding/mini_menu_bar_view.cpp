#include "onboarding/mini_menu_bar_view.h"

#include "ui/control_style.h"
#include "ui/fonts.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/status_glyph.h"
#include "ui/symbols.h"

#include <QPainter>

namespace tessellon {
namespace {

constexpr QSize preferredSize(560, 124);
constexpr int leastWidth = 300;

// The piece of a screen that the bar is the top of.
constexpr double screenRadius = 18;
constexpr double barHeight = 42;
constexpr double sidePadding = 18;
constexpr double itemSpacing = 16;

constexpr double clockFontSize = 14;
constexpr double symbolSize = 20;
constexpr double batterySize = 24;
constexpr double glyphSize = 20;
constexpr double haloSize = 30;
constexpr double haloRadius = 9;

constexpr double pointerFontSize = 15;
constexpr double arrowSize = 38;
constexpr double arrowStroke = 1.8;
constexpr double arrowGap = 6;
constexpr double pointerSpacing = 0;

/// Bars that stand for the menus of whatever application is in front.
void drawMenus(QPainter& painter, const QRectF& bar) {
    constexpr double dot = 12;
    constexpr double thickness = 6;
    double left = bar.left() + sidePadding;
    paintCapsule(painter, QRectF(left, bar.center().y() - dot / 2, dot, dot), palette::coral,
                 {palette::ink, control_style::outline});
    left += dot + itemSpacing;
    for (const double width : {46.0, 28.0, 34.0}) {
        paintCapsule(painter, QRectF(left, bar.center().y() - thickness / 2, width, thickness),
                     palette::line);
        left += width + itemSpacing;
    }
}

/// Draws clock, battery, network and our own item from the right; returns the room of the latter.
QRectF drawStatusItems(QPainter& painter, const QRectF& bar) {
    double right = bar.right() - sidePadding;
    const QFont font = interfaceFont(clockFontSize, QFont::Bold);
    const auto clock = QStringLiteral("9:41");
    const double clockWidth = textWidth(font, clock);
    painter.setFont(font);
    painter.setPen(palette::ink);
    drawLine(painter, QRectF(right - clockWidth, bar.top(), clockWidth, bar.height()), clock);
    right -= clockWidth + itemSpacing;
    const auto place = [&](double size) {
        const QRectF room(right - size, bar.center().y() - size / 2, size, size);
        right -= size + itemSpacing;
        return room;
    };
    drawSymbol(painter, Symbol::battery75, place(batterySize), palette::ink);
    drawSymbol(painter, Symbol::wifi, place(symbolSize), palette::ink);
    const QRectF halo = place(haloSize);
    paintRoundedRect(painter, halo, haloRadius, palette::teal,
                     {palette::ink, control_style::outline});
    QRectF glyph(0, 0, glyphSize, glyphSize);
    glyph.moveCenter(halo.center());
    paintStatusGlyph(painter, glyph, palette::ink);
    return halo;
}

}  // namespace

MiniMenuBar::MiniMenuBar(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setText(QStringLiteral("Tessellon lives up here"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize MiniMenuBar::sizeHint() const {
    return preferredSize;
}

QSize MiniMenuBar::minimumSizeHint() const {
    return {leastWidth, preferredSize.height()};
}

void MiniMenuBar::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF screen = rect();
    const QRectF bar(screen.left(), screen.top(), screen.width(), barHeight);
    painter.save();
    painter.setClipPath(continuousRoundedRect(screen, screenRadius));
    painter.fillRect(screen, palette::cream);
    painter.fillRect(bar, palette::paper);
    painter.fillRect(QRectF(bar.left(), bar.bottom(), bar.width(), control_style::outline),
                     palette::ink);
    painter.restore();
    strokeBorder(painter, screen, screenRadius, {palette::ink, control_style::outline});
    drawMenus(painter, bar);
    const QRectF item = drawStatusItems(painter, bar);

    // The tip is a quarter of the drawing's size away from its corner; it ends below the item.
    constexpr double tip = arrowSize * 0.25;
    const QRectF arrow(item.center().x() + tip - arrowSize, bar.bottom() + arrowGap - tip / 2,
                       arrowSize, arrowSize);
    drawSymbol(painter, Symbol::arrowUpRight, arrow, palette::ink, arrowStroke);
    painter.setFont(interfaceFont(pointerFontSize, QFont::Bold));
    painter.setPen(palette::ink);
    const double lineBox = lineHeight(painter.font());
    drawLine(painter,
             QRectF(screen.left(), arrow.bottom() - arrowSize / 4 - lineBox / 4,
                    arrow.left() - pointerSpacing - screen.left(), lineBox),
             text(), Qt::AlignRight);
}

}  // namespace tessellon
