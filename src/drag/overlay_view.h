// Draws the preview of where a window will land.
#pragma once

#include "engine/snap_action.h"
#include "platform/qt/panel_window.h"

#include <QRectF>
#include <QString>
#include <QStringList>

namespace tessellon {

class OverlayView : public PanelWindow {
  public:
    /// The compositing must outlive the view's use.
    explicit OverlayView(Compositing& compositing);

    /// Names the action and its shortcut, which may be empty.
    void setAction(SnapAction action, const QString& shortcut);

    /// Where the label is, in the widget's pixels; empty when the panel is too small for one.
    QRectF labelRect() const;

  protected:
    void updateShape() override;
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Label;
    Label label() const;
    void paintLabel(QPainter& painter, const Label& label) const;

    SnapAction action_ = SnapAction::center;
    QString title_;
    QStringList keys_;
};

}  // namespace tessellon
