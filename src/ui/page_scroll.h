// The part of a window that scrolls where the window is too low for all of it; panels, which keep
// their round corners and their measures, have a PanelScroll.
#pragma once

#include "ui/scroll_bar.h"

#include <QScrollArea>

namespace tessellon {

/// Scrolls its widget up and down; the wheel does, its bar, and a control that gets the keyboard.
/// The bar has its room at the trailing edge also while there is nothing to scroll, so that the
/// widget keeps its width.
class PageScroll : public QScrollArea {
  public:
    explicit PageScroll(QWidget* parent = nullptr);

    /// The room of the bar, in logical pixels.
    static constexpr int barWidth = ScrollBar::barWidth;

  private:
    void reveal(QWidget* focused);
};

}  // namespace tessellon
