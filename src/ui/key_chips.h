// Key caps that show a shortcut, one for each key.
#pragma once

#include <QPainter>
#include <QPointF>
#include <QSizeF>
#include <QString>
#include <QStringList>
#include <QWidget>

namespace tessellon {

/// Each Unicode character of the text by itself, as the keys of a shortcut's text are shown.
QStringList onePerCharacter(const QString& text);

/// The names of the keys of this desktop, such as "Control Alt Left Arrow", for assistive
/// technology.
QString spokenKeys(const QStringList& keys);

/// The font size of the caps' labels, which are semibold; both sizes in logical pixels, `size` a
/// cap's height.
constexpr double keyChipsFontSize(double size) {
    constexpr double scale = 0.55;
    return size * scale;
}

/// The room that the caps of `keys` take in a row, in logical pixels; `size` is a cap's height.
QSizeF keyChipsSize(const QStringList& keys, double size);

/// Draws the caps in a row from left to right.
void paintKeyChips(QPainter& painter, const QPointF& topLeft, const QStringList& keys, double size);

/// The caps as a widget. Assistive technology reads the keys by their names.
class KeyChips : public QWidget {
  public:
    KeyChips(const QStringList& keys, double size, QWidget* parent = nullptr);

    void setKeys(const QStringList& keys);
    QSize sizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QStringList keys_;
    double size_;
};

}  // namespace tessellon
