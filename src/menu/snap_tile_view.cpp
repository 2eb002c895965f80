#include "menu/snap_tile_view.h"

#include "engine/snap_action_names.h"
#include "ui/control_style.h"
#include "ui/easing.h"
#include "ui/fonts.h"
#include "ui/layer.h"
#include "ui/mini_screen.h"
#include "ui/palette.h"
#include "ui/shapes.h"
#include "ui/text.h"

#include <QCursor>
#include <QEnterEvent>
#include <QEvent>
#include <QMouseEvent>
#include <algorithm>
#include <cmath>
#include <utility>

namespace tessellon {
namespace {

constexpr double restingOpacity = 0.22;
constexpr double hoverOpacity = 0.5;
constexpr double hoverBorder = 1.5;
constexpr double hoverScale = 1.05;
constexpr double pressedScale = 0.95;
constexpr double springResponse = 0.22;
constexpr double springDamping = 0.7;
constexpr int pressMilliseconds = 100;

constexpr QSize pictureSize{36, 24};
constexpr int verticalPadding = 6;
constexpr int labelSpacing = 4;
constexpr double labelSize = 10;
constexpr double labelMinimumScale = 0.8;
constexpr double labelSideMargin = 3;
constexpr double ringWidth = 2;

int labelHeight() {
    return static_cast<int>(std::ceil(lineHeight(interfaceFont(labelSize, QFont::DemiBold))));
}

}  // namespace

SnapTileStyle::SnapTileStyle(const QColor& color, std::function<void()> changed)
    : color_(color), changed_(std::move(changed)), hover_(springResponse, springDamping) {
    QObject::connect(&hoverMotion_, &QVariantAnimation::valueChanged, &hoverMotion_,
                     [this](const QVariant& seconds) {
                         hoverValue_ = hover_.valueAt(seconds.toDouble());
                         changed_();
                     });
    QObject::connect(&hoverMotion_, &QVariantAnimation::finished, &hoverMotion_, [this] {
        hoverValue_ = hover_.target();
        changed_();
    });
    pressMotion_.setDuration(pressMilliseconds);
    pressMotion_.setEasingCurve(easeOut());
    QObject::connect(&pressMotion_, &QVariantAnimation::valueChanged, &pressMotion_,
                     [this](const QVariant& value) {
                         pressValue_ = value.toDouble();
                         changed_();
                     });
}

double SnapTileStyle::hoverSeconds() const {
    // At rest it is as if all of the last motion had passed.
    return hoverMotion_.state() == QAbstractAnimation::Running
               ? hoverMotion_.currentValue().toDouble()
               : hover_.settlingTime();
}

void SnapTileStyle::setHovering(bool hovering) {
    if (hovering_ == hovering) {
        return;
    }
    hovering_ = hovering;
    hover_.aim(hovering ? 1 : 0, hoverSeconds());
    hoverMotion_.stop();
    const double seconds = hover_.settlingTime();
    hoverMotion_.setStartValue(0.0);
    hoverMotion_.setEndValue(seconds);
    hoverMotion_.setDuration(static_cast<int>(std::ceil(seconds * 1000)));
    hoverMotion_.start();
}

void SnapTileStyle::setPressed(bool pressed) {
    if (pressed_ == pressed) {
        return;
    }
    pressed_ = pressed;
    const double from = pressValue_;
    pressMotion_.stop();
    pressMotion_.setStartValue(from);
    pressMotion_.setEndValue(pressed ? 1.0 : 0.0);
    pressMotion_.start();
}

double SnapTileStyle::fillOpacity() const {
    return std::clamp(std::lerp(restingOpacity, hoverOpacity, hoverValue_), 0.0, 1.0);
}

double SnapTileStyle::borderWidth() const {
    return std::max(0.0, std::lerp(0.0, hoverBorder, hoverValue_));
}

double SnapTileStyle::scale() const {
    return std::lerp(std::lerp(1.0, hoverScale, hoverValue_), pressedScale, pressValue_);
}

void SnapTileStyle::paint(QPainter& painter, const QRectF& tile,
                          const std::function<void(QPainter&)>& label) const {
    painter.save();
    painter.translate(tile.center());
    painter.scale(scale(), scale());
    painter.translate(-tile.center());
    paintRoundedRect(painter, tile, cornerRadius, palette::withOpacity(color_, fillOpacity()));
    strokeBorder(painter, tile, cornerRadius, {palette::ink, borderWidth()});
    label(painter);
    painter.restore();
}

bool SnapTileStyle::isAnimating() const {
    return hoverMotion_.state() == QAbstractAnimation::Running ||
           pressMotion_.state() == QAbstractAnimation::Running;
}

void SnapTileStyle::finishAnimations() {
    for (auto* const motion : {&hoverMotion_, &pressMotion_}) {
        if (motion->state() == QAbstractAnimation::Running) {
            motion->setCurrentTime(motion->duration());
        }
    }
}

SnapTile::SnapTile(SnapAction action, QWidget* parent)
    : QAbstractButton(parent),
      action_(action),
      label_(toQString(shortTitle(action))),
      style_(palette::groupColor(action), [this] { update(); }) {
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    setAccessibleName(toQString(title(action)));
    setAccessibleDescription(QStringLiteral("Snaps the window in front"));
    connect(this, &QAbstractButton::pressed, this, [this] { style_.setPressed(true); });
    connect(this, &QAbstractButton::released, this, [this] { style_.setPressed(false); });
}

int SnapTile::tileHeight() {
    return 2 * verticalPadding + pictureSize.height() + labelSpacing + labelHeight();
}

void SnapTile::setTileGeometry(const QRect& tile) {
    setGeometry(tile.adjusted(-overhang, -overhang, overhang, overhang));
}

QRect SnapTile::tileGeometry() const {
    return geometry().adjusted(overhang, overhang, -overhang, -overhang);
}

QRect SnapTile::tileRect() const {
    return rect().adjusted(overhang, overhang, -overhang, -overhang);
}

bool SnapTile::hitButton(const QPoint& position) const {
    return tileRect().contains(position);
}

void SnapTile::paintEvent(QPaintEvent* /*event*/) {
    QPainter widgetPainter(this);
    const double opacity = isEnabled() ? 1 : control_style::disabledOpacity;
    paintLayer(widgetPainter, size(), opacity, [this](QPainter& painter) {
        style_.paint(painter, QRectF(tileRect()), [this](QPainter& onTile) { paintLabel(onTile); });
    });
    if (hasFocus()) {
        strokeBorder(widgetPainter, QRectF(rect()), SnapTileStyle::cornerRadius + overhang,
                     {palette::ink, ringWidth});
    }
}

void SnapTile::paintLabel(QPainter& painter) const {
    const QRect tile = tileRect();
    // On a whole pixel, so that the picture's lines are sharp.
    const int left = tile.left() + (tile.width() - pictureSize.width()) / 2;
    const int top = tile.top() + verticalPadding;
    paintMiniScreen(painter, QRectF(QPointF(left, top), QSizeF(pictureSize)), action_);

    const QRectF line(tile.left() + labelSideMargin, top + pictureSize.height() + labelSpacing,
                      tile.width() - 2 * labelSideMargin, labelHeight());
    const auto fitted =
        fitText(label_, line.width(), labelSize, QFont::DemiBold, labelMinimumScale);
    painter.setFont(fitted.font);
    painter.setPen(palette::ink);
    drawLine(painter, line, fitted.text);
}

void SnapTile::pointerAt(const QPoint& position) {
    const bool hovering = isEnabled() && hitButton(position);
    if (hovering && !style_.isHovering()) {
        raise();  // a tile that has grown lies above its neighbours
    }
    style_.setHovering(hovering);
}

void SnapTile::mouseMoveEvent(QMouseEvent* event) {
    QAbstractButton::mouseMoveEvent(event);
    pointerAt(event->position().toPoint());
}

void SnapTile::enterEvent(QEnterEvent* event) {
    QAbstractButton::enterEvent(event);
    pointerAt(event->position().toPoint());
}

void SnapTile::leaveEvent(QEvent* event) {
    QAbstractButton::leaveEvent(event);
    style_.setHovering(false);
}

void SnapTile::changeEvent(QEvent* event) {
    QAbstractButton::changeEvent(event);
    if (event->type() == QEvent::EnabledChange) {
        style_.setPressed(isDown());
        if (underMouse()) {
            pointerAt(mapFromGlobal(QCursor::pos()));
        }
        update();
    }
}

}  // namespace tessellon
