#include "settings/page_header_view.h"

#include "ui/focus_ring.h"
#include "ui/palette.h"
#include "ui/text_label.h"

#include <QVBoxLayout>

namespace tessellon {
namespace {

constexpr double titleSize = 26;
constexpr double subtitleSize = 13;
constexpr int spacing = 2;
// With the spacing of a page it makes more room than there is between what follows.
constexpr int below = 4;

}  // namespace

PageHeader::PageHeader(const QString& title, const QString& subtitle, QWidget* parent)
    : QWidget(parent) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(FocusRing::reach, 0, FocusRing::reach, below);
    column->setSpacing(spacing);
    column->addWidget(
        new TextLabel(title, titleSize, QFont::Bold, palette::ink, TextWrap::words, this));
    column->addWidget(new TextLabel(subtitle, subtitleSize, QFont::Medium, palette::muted,
                                    TextWrap::words, this));
}

}  // namespace tessellon
