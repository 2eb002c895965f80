// The tiles of the status item's panel: each snaps the window in front.
#pragma once

#include "engine/snap_action.h"
#include "ui/spring.h"

#include <QAbstractButton>
#include <QColor>
#include <QPainter>
#include <QRectF>
#include <QString>
#include <QVariantAnimation>
#include <functional>

namespace tessellon {

/// How a tile looks and moves: it grows and darkens below the pointer, and gives way while it is
/// pressed.
class SnapTileStyle {
  public:
    /// `changed` is called when the tile has to be drawn anew.
    SnapTileStyle(const QColor& color, std::function<void()> changed);

    const QColor& color() const { return color_; }

    bool isHovering() const { return hovering_; }
    void setHovering(bool hovering);
    void setPressed(bool pressed);

    /// What is drawn at the moment.
    double fillOpacity() const;
    double borderWidth() const;
    double scale() const;

    /// Draws the tile's shape in `tile` and the label upon it, both at the scale of the moment
    /// about the middle.
    void paint(QPainter& painter, const QRectF& tile,
               const std::function<void(QPainter&)>& label) const;

    /// Whether the look is still on its way.
    bool isAnimating() const;
    /// Puts the look where it is going.
    void finishAnimations();

    static constexpr double cornerRadius = 12;

  private:
    double hoverSeconds() const;

    QColor color_;
    std::function<void()> changed_;
    bool hovering_ = false;
    bool pressed_ = false;
    /// 0 at rest, 1 below the pointer.
    Spring hover_;
    double hoverValue_ = 0;
    /// 0 at rest, 1 pressed.
    double pressValue_ = 0;
    QVariantAnimation hoverMotion_;
    QVariantAnimation pressMotion_;
};

/// A click, or Space while it has the focus, asks for its action. Only the keyboard gives it the
/// focus, and then it draws a ring.
class SnapTile : public QAbstractButton {
  public:
    SnapTile(SnapAction action, QWidget* parent);

    SnapAction action() const { return action_; }
    SnapTileStyle& tileStyle() { return style_; }

    /// The room of the tile itself. The widget is larger by `overhang` on each side, for the ring
    /// and for the tile when it grows; there it lets the pointer pass.
    void setTileGeometry(const QRect& tile);
    QRect tileGeometry() const;
    static constexpr int overhang = 4;

    /// The height of a tile in logical pixels.
    static int tileHeight();

  protected:
    bool hitButton(const QPoint& position) const override;
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    QRect tileRect() const;
    void pointerAt(const QPoint& position);
    void paintLabel(QPainter& painter) const;

    SnapAction action_;
    QString label_;
    SnapTileStyle style_;
};

}  // namespace tessellon
