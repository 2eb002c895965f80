// A line or a paragraph of text in the interface font.
#pragma once

#include <QColor>
#include <QFont>
#include <QLabel>
#include <QString>
#include <cstdint>

namespace tessellon {

enum class TextWrap : std::uint8_t { none, words };

/// Plain text, whatever it contains; to assistive technology it is its text.
class TextLabel : public QLabel {
  public:
    /// `pixelSize` is in logical pixels. Text that wraps is as high as its width makes it.
    TextLabel(const QString& text, double pixelSize, QFont::Weight weight, const QColor& color,
              TextWrap wrap = TextWrap::words, QWidget* parent = nullptr);

    void setColor(const QColor& color);

    int heightForWidth(int width) const override;
};

}  // namespace tessellon
