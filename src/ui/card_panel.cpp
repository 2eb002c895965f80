#include "ui/card_panel.h"

#include "platform/qt/screen_coordinates.h"
#include "ui/mask.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <limits>

namespace tessellon {
namespace {

constexpr double cornerRadius = 22;
constexpr double borderWidth = 2;

}  // namespace

CardPanel::CardPanel(PanelLevel level, Compositing& compositing)
    : PanelWindow(level, PanelInput::takesClicks, compositing) {}

int CardPanel::greatestHeight(const Rect& area) {
    if (area.height <= 0) {
        return std::numeric_limits<int>::max();
    }
    const auto screens = qtScreens();
    const QRect whole = toQtGeometry(area, screens);
    // Half pixels are rounded.
    return whole.height() - (fromQtGeometry(whole, screens).height > area.height ? 1 : 0);
}

void CardPanel::setSizeOnScreen(const QSize& size, const Rect& area) {
    const auto screens = qtScreens();
    const auto origin = toQtGeometry(area, screens).topLeft();
    setScreenFrame(fromQtGeometry({origin, size}, screens));
}

void CardPanel::paintCard(QPainter& painter) const {
    if (backdrop() == Backdrop::opaque) {
        // Pixels that the mask leaves and the shape covers in part belong to the border.
        painter.fillRect(rect(), palette::ink);
    }
    paintRoundedRect(painter, QRectF(rect()), cornerRadius, palette::paper,
                     {palette::ink, borderWidth});
}

void CardPanel::updateShape() {
    if (backdrop() == Backdrop::translucent) {
        clearMask();
        return;
    }
    setMask(roundedMask(rect(), cornerRadius));
}

}  // namespace tessellon
