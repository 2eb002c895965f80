// Text for a room that may be too small for it.
#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QStringList>
#include <QWidget>

namespace tessellon {

/// Plain text on up to a number of lines. What does not fit is cut off with an ellipsis, and the
/// whole is shown when the pointer rests on it (up to a length that nobody reads). As high as all
/// of its lines, whatever it says; it may be made as narrow as one likes.
class ElidedLabel : public QWidget {
  public:
    struct Style {
        /// In logical pixels.
        double size;
        QFont::Weight weight = QFont::Medium;
        QColor color;
        int lines = 1;
    };

    ElidedLabel(const QString& text, const Style& style, QWidget* parent = nullptr);

    const QString& text() const { return text_; }
    void setText(const QString& text);
    const QColor& color() const { return style_.color; }
    void setColor(const QColor& color);

    /// What is drawn in the present width.
    QStringList lines() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void explain();

    QString text_;
    Style style_;
};

}  // namespace tessellon
