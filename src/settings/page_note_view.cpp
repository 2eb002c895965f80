#include "settings/page_note_view.h"

#include "ui/focus_ring.h"
#include "ui/palette.h"

namespace tessellon {
namespace {

constexpr double textSize = 13;

}  // namespace

TextLabel* makePageNote(const QString& text, QWidget* parent) {
    auto* const note =
        new TextLabel(text, textSize, QFont::Medium, palette::muted, TextWrap::words, parent);
    note->setContentsMargins(FocusRing::reach, 0, FocusRing::reach, 0);
    return note;
}

}  // namespace tessellon
