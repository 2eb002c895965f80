// What the face in the tour says.
#pragma once

#include "ui/symbols.h"

#include <QLabel>
#include <QString>

namespace tessellon {

/// A bubble whose tail points to the face before it; to assistive technology it is its text.
class SpeechBubble : public QLabel {
  public:
    SpeechBubble(const QString& text, Symbol symbol, QWidget* parent = nullptr);

    void say(const QString& text, Symbol symbol);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    Symbol symbol_;
};

}  // namespace tessellon
