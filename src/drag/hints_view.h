// Draws the zone grid of one screen.
#pragma once

#include "drag/hint.h"
#include "engine/snap_action.h"
#include "platform/qt/panel_window.h"

#include <QPixmap>
#include <QRectF>
#include <QRegion>
#include <QVariantAnimation>
#include <optional>
#include <vector>

namespace tessellon {

class HintsView : public PanelWindow {
  public:
    /// The compositing must outlive the view's use.
    explicit HintsView(Compositing& compositing);

    /// Shows these zones, none of them active.
    void setHints(std::vector<Hint> hints);
    /// Highlights the zone of an action, or none; only zones that change are painted.
    void setActive(std::optional<SnapAction> action);

  protected:
    void updateShape() override;
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    /// A zone, and how far it has become active: 0 not at all, 1 wholly.
    struct Cell {
        SnapAction action;
        QRectF rect;    // in the widget's pixels
        QPixmap label;  // picture and name, drawn once for many paints
        QSizeF labelSize;
        double activity = 0;
        double from = 0;
        double to = 0;
    };

    bool isActive(const Cell& cell) const { return active_ && *active_ == cell.action; }
    void layOut();
    void drawLabel(Cell& cell) const;
    void advance(double progress);
    /// The outline's width where nothing is translucent.
    int hollowWidth(const Cell& cell) const;
    QRegion outline(const Cell& cell) const;
    void paintCell(QPainter& painter, const Cell& cell) const;
    void paintHollowCell(QPainter& painter, const Cell& cell) const;
    void paintLabel(QPainter& painter, const Cell& cell, const QColor& background,
                    double opacity) const;

    std::vector<Hint> hints_;
    std::optional<SnapAction> active_;
    std::vector<Cell> cells_;
    double laidOutFor_ = 0;  // the device pixel ratio
    QVariantAnimation animation_;
};

}  // namespace tessellon
