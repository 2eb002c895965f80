// A small picture of a screen that shows what a snap action does.
#pragma once

#include "engine/snap_action.h"

#include <QPainter>
#include <QRectF>
#include <QWidget>
#include <optional>

namespace tessellon {

/// Where the picture of the action shows the window, when the picture is 1 × 1 with y down. Nothing
/// for the actions that are shown as a move between two screens.
std::optional<QRectF> miniScreenZone(SnapAction action);

/// Draws the picture with its edges on those of `rect`, in logical pixels.
void paintMiniScreen(QPainter& painter, const QRectF& rect, SnapAction action);

/// The picture as a widget, in whatever size it is given.
class MiniScreen : public QWidget {
  public:
    MiniScreen(SnapAction action, const QSize& size, QWidget* parent = nullptr);

    void setAction(SnapAction action);
    QSize sizeHint() const override { return size_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    SnapAction action_;
    QSize size_;
};

}  // namespace tessellon
