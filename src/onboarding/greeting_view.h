// The face of the tour with what it says.
#pragma once

#include "onboarding/face_tile_view.h"
#include "onboarding/speech_bubble_view.h"

#include <QWidget>

namespace tessellon {

class Greeting : public QWidget {
  public:
    explicit Greeting(QWidget* parent = nullptr);

    void greet(const QColor& color, Blush blush, const QString& text, Symbol symbol);

  private:
    FaceTile* face_;
    SpeechBubble* bubble_;
};

}  // namespace tessellon
