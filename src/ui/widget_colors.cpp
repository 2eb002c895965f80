#include "ui/widget_colors.h"

#include "ui/palette.h"

#include <QPalette>

namespace tessellon {

void setWindowColors(QWidget& content) {
    auto colors = content.palette();
    colors.setColor(QPalette::Window, palette::background);
    content.setPalette(colors);
    content.setAutoFillBackground(true);
}

void setTextColors(QWidget& editor, const QColor& paper) {
    constexpr double selectionOpacity = 0.4;
    auto colors = editor.palette();
    colors.setColor(QPalette::Base, paper);
    colors.setColor(QPalette::Text, palette::ink);
    colors.setColor(QPalette::Disabled, QPalette::Text, palette::muted);
    colors.setColor(QPalette::PlaceholderText, palette::muted);
    colors.setColor(QPalette::Highlight, palette::withOpacity(palette::teal, selectionOpacity));
    colors.setColor(QPalette::HighlightedText, palette::ink);
    editor.setPalette(colors);
}

}  // namespace tessellon
