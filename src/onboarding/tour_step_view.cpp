#include "onboarding/tour_step_view.h"

#include "onboarding/spoken_text_view.h"
#include "ui/accessible_role.h"
#include "ui/page_scroll.h"
#include "ui/palette.h"

namespace tessellon {
namespace {

constexpr int sideMargin = 40;
constexpr int topMargin = 36;
constexpr int bottomMargin = 26;

constexpr double labelSize = 13;
constexpr double titleSize = 26;
constexpr double textSize = 14;
constexpr int labelSpacing = 4;
constexpr int titleSpacing = 8;
constexpr int headerSpacing = 24;

QString labelOf(int step) {
    return step == 0
               ? QStringLiteral("Welcome")
               : QStringLiteral("Step %1 of %2").arg(step + 1).arg(OnboardingModel::stepCount);
}

}  // namespace

TourStep::TourStep(OnboardingModel& model, QWidget* parent)
    : QWidget(parent), model_(model), column_(new QVBoxLayout(this)) {
    // The bar that scrolls the step has its room at the trailing edge.
    column_->setContentsMargins(sideMargin, topMargin, sideMargin - PageScroll::barWidth,
                                bottomMargin);
    column_->setSpacing(0);
}

void TourStep::addHeader(const QString& title, const QString& text) {
    const auto label = labelOf(model_.step());
    heading_ = label + QStringLiteral(": ") + title;
    text_ = spokenText(text);
    column_->addWidget(
        new TextLabel(label, labelSize, QFont::Bold, palette::muted, TextWrap::none, this));
    column_->addSpacing(labelSpacing);
    auto* const heading =
        new TextLabel(title, titleSize, QFont::Bold, palette::ink, TextWrap::words, this);
    setAccessibleRole(*heading, QAccessible::Heading);
    heading->setAccessibleName(title);
    column_->addWidget(heading);
    column_->addSpacing(titleSpacing);
    auto* const below =
        new TextLabel(text, textSize, QFont::Medium, palette::muted, TextWrap::words, this);
    below->setAccessibleName(text_);
    column_->addWidget(below);
    column_->addSpacing(headerSpacing);
}

}  // namespace tessellon
