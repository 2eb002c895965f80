// What the panels that take clicks have in common: a card with round corners, no higher than the
// screen has room for.
#pragma once

#include "platform/qt/panel_window.h"

#include <QPainter>
#include <QSize>

namespace tessellon {

class CardPanel : public PanelWindow {
  protected:
    /// The compositing must outlive the panel's use.
    CardPanel(PanelLevel level, Compositing& compositing);

    /// The greatest height of a panel within the area (screen coordinates), in logical pixels of
    /// the screen there; an empty area sets no limit.
    static int greatestHeight(const Rect& area);

    /// Gives the panel this size, in logical pixels of the screen where the area is.
    void setSizeOnScreen(const QSize& size, const Rect& area);

    /// Draws the card over the whole panel.
    void paintCard(QPainter& painter) const;

    void updateShape() override;
};

}  // namespace tessellon
