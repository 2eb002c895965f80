// A line of text in the panel.
#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QWidget>

namespace tessellon {

class MenuLabel : public QWidget {
  public:
    struct Look {
        /// In logical pixels.
        double size = 12;
        QFont::Weight weight = QFont::Medium;
        QColor color;
        Qt::Alignment alignment = Qt::AlignLeft;
    };

    /// Has the size of its text; a text that is too wide for the width it is given ends in an
    /// ellipsis. Assistive technology reads all of it.
    MenuLabel(const QString& text, const Look& look, QWidget* parent);

    void setText(const QString& text);
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString text_;
    Look look_;
};

}  // namespace tessellon
