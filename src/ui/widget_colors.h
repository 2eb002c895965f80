// The program's colours for what the toolkit paints itself.
#pragma once

#include <QColor>
#include <QWidget>

namespace tessellon {

/// Fills the widget, which holds all that is in a window, with the colour of windows.
void setWindowColors(QWidget& content);

/// Colours for a widget in which text is read, typed and selected; `paper` lies below the text.
void setTextColors(QWidget& editor, const QColor& paper);

}  // namespace tessellon
