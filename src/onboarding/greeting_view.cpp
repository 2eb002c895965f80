#include "onboarding/greeting_view.h"

#include "ui/palette.h"

#include <QHBoxLayout>

namespace tessellon {
namespace {

constexpr int spacing = 8;
constexpr int spaceBelow = 18;

}  // namespace

Greeting::Greeting(QWidget* parent)
    : QWidget(parent),
      face_(new FaceTile(palette::amber, Blush::none, this)),
      bubble_(new SpeechBubble({}, Symbol::handWave, this)) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, spaceBelow);
    row->setSpacing(spacing);
    row->addWidget(face_);
    row->addWidget(bubble_);
    row->addStretch();
}

void Greeting::greet(const QColor& color, Blush blush, const QString& text, Symbol symbol) {
    face_->setFace(color, blush);
    bubble_->say(text, symbol);
}

}  // namespace tessellon
