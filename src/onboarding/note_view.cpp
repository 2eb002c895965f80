#include "onboarding/note_view.h"

#include "ui/dot.h"
#include "ui/palette.h"

#include <QHBoxLayout>

namespace tessellon {
namespace {

constexpr double fontSize = 12;
constexpr int dotSize = 7;
constexpr int spacing = 7;

}  // namespace

Note::Note(QWidget* parent)
    : QWidget(parent),
      text_(new TextLabel({}, fontSize, QFont::DemiBold, palette::ink, TextWrap::words, this)) {
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 2, 0, 0);
    row->setSpacing(spacing);
    // The dot stands in the middle of the first line.
    auto* const dotColumn = new QVBoxLayout;
    dotColumn->addSpacing((text_->fontMetrics().height() - dotSize) / 2);
    dotColumn->addWidget(new Dot(dotSize, palette::coral, this));
    dotColumn->addStretch();
    row->addLayout(dotColumn);
    row->addWidget(text_, 1);
    hide();
}

void Note::setNote(const std::optional<std::string>& note) {
    text_->setText(QString::fromStdString(note.value_or("")));
    setVisible(note.has_value());
}

}  // namespace tessellon
