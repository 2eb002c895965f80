#include "ui/text_label.h"

#include "ui/fonts.h"

#include <QPalette>
#include <algorithm>

namespace tessellon {

TextLabel::TextLabel(const QString& text, double pixelSize, QFont::Weight weight,
                     const QColor& color, TextWrap wrap, QWidget* parent)
    : QLabel(parent) {
    setTextFormat(Qt::PlainText);  // names and what was fetched are never markup
    setFont(interfaceFont(pixelSize, weight));
    setWordWrap(wrap == TextWrap::words);
    setColor(color);
    setText(text);
}

void TextLabel::setColor(const QColor& color) {
    auto colors = palette();
    colors.setColor(QPalette::WindowText, color);
    setPalette(colors);
}

int TextLabel::heightForWidth(int width) const {
    // Layouts offer more than the text may be wide, and would keep too little height for it.
    return QLabel::heightForWidth(std::min(width, maximumWidth()));
}

}  // namespace tessellon
