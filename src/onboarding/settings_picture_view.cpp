#include "onboarding/settings_picture_view.h"

#include "onboarding/pointer_view.h"
#include "ui/control_style.h"
#include "ui/glyph.h"
#include "ui/palette.h"
#include "ui/shapes.h"

#include <QPainter>

namespace tessellon {
namespace {

constexpr QSize pictureSize(150, 128);
constexpr double radius = 13;
constexpr double padding = 11;
constexpr double titleHeight = 20;
constexpr double rowHeight = 30;
constexpr int rows = 3;
constexpr int ourRow = 1;
constexpr double signSize = 18;
constexpr double barThickness = 6;
constexpr QSizeF switchSize(28, 17);
constexpr double pointerHeight = 26;

void drawSwitch(QPainter& painter, const QRectF& rect, const QColor& color, bool isOn) {
    constexpr double inset = 2.4;
    paintCapsule(painter, rect, color, {palette::ink, control_style::thinOutline});
    const double side = rect.height() - 2 * inset;
    const double left = isOn ? rect.right() - inset - side : rect.left() + inset;
    paintCapsule(painter, QRectF(left, rect.top() + inset, side, side), palette::white,
                 {palette::ink, control_style::thinOutline});
}

/// Rows of other programs are but hinted at.
void drawOtherRow(QPainter& painter, const QRectF& row, double share) {
    paintRoundedRect(painter,
                     QRectF(row.left(), row.center().y() - signSize / 2, signSize, signSize), 5,
                     palette::line);
    paintCapsule(painter,
                 QRectF(row.left() + signSize + 8, row.center().y() - barThickness / 2,
                        row.width() * share, barThickness),
                 palette::line);
    paintCapsule(painter,
                 QRectF(QPointF(row.right() - switchSize.width(),
                                row.center().y() - switchSize.height() / 2),
                        switchSize),
                 palette::line);
}

}  // namespace

SettingsPicture::SettingsPicture(Permission permission, QWidget* parent)
    : QWidget(parent), permission_(permission) {
    setFixedSize(pictureSize);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void SettingsPicture::setPermission(Permission permission) {
    permission_ = permission;
    update();
}

void SettingsPicture::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isGranted = permission_ == Permission::granted;
    const QRectF window = rect();
    paintRoundedRect(painter, window, radius, palette::cream,
                     {palette::ink, control_style::outline});
    constexpr double dot = 6;
    for (int i = 0; i < 3; ++i) {
        paintCapsule(painter, QRectF(padding + i * (dot + 4), padding - 1, dot, dot),
                     palette::paper, {palette::ink, 1});
    }
    for (int i = 0; i < rows; ++i) {
        const QRectF row(padding, titleHeight + 5 + i * (rowHeight + 2),
                         window.width() - 2 * padding, rowHeight);
        if (i != ourRow) {
            constexpr double upperShare = 0.3;
            constexpr double lowerShare = 0.38;
            drawOtherRow(painter, row, i == 0 ? upperShare : lowerShare);
            continue;
        }
        constexpr double reach = 5;
        paintRoundedRect(painter, row.adjusted(-reach, -1, reach, 1), reach + 4, palette::paper,
                         {palette::ink, control_style::outline});
        paintGlyph(painter,
                   QRectF(row.left() + 1, row.center().y() - signSize / 2, signSize, signSize));
        paintCapsule(painter,
                     QRectF(row.left() + signSize + 9, row.center().y() - barThickness / 2, 42,
                            barThickness),
                     palette::ink);
        const QRectF control(
            QPointF(row.right() - switchSize.width(), row.center().y() - switchSize.height() / 2),
            switchSize);
        drawSwitch(painter, control, isGranted ? palette::teal : palette::line, isGranted);
    }
    if (!isGranted) {
        const double y = titleHeight + 5 + ourRow * (rowHeight + 2) + rowHeight / 2;
        paintPointer(painter, QPointF(window.right() - padding - 9, y + 3), pointerHeight);
    }
}

}  // namespace tessellon
