#include "ui/slider_row.h"

#include "ui/focus_ring.h"
#include "ui/palette.h"
#include "ui/text_label.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace tessellon {
namespace {

constexpr double titleSize = 14;
constexpr double subtitleSize = 12;
constexpr double numberSize = 13;
constexpr int textSpacing = 2;
constexpr int numberSpacing = 12;
// A file that was edited by hand may hold anything; no larger number has to fit.
constexpr double largestNumber = 999999;

}  // namespace

SliderRow::SliderRow(const SliderRowSpec& spec, double value, QWidget* parent)
    : QWidget(parent), unit_(spec.unit) {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(FocusRing::reach, 0, FocusRing::reach, FocusRing::reach);
    column->setSpacing(textSpacing);
    auto* const line = new QHBoxLayout;
    line->setSpacing(numberSpacing);
    line->addWidget(
        new TextLabel(spec.title, titleSize, QFont::DemiBold, palette::ink, TextWrap::words, this),
        1);
    number_ =
        new TextLabel(QString(), numberSize, QFont::DemiBold, palette::ink, TextWrap::none, this);
    line->addWidget(number_, 0, Qt::AlignTop);
    column->addLayout(line);
    if (!spec.subtitle.isEmpty()) {
        column->addWidget(new TextLabel(spec.subtitle, subtitleSize, QFont::Medium, palette::muted,
                                        TextWrap::words, this));
    }
    column->addSpacing(FocusRing::reach);
    slider_ = new PillSlider(spec.title, spec.range, spec.step, spec.color, this);
    slider_->setAccessibleDescription(spec.subtitle);
    column->addWidget(slider_);
    changed_ = slider_->valueChanged().subscribe([this](double /*value*/) { showNumber(); });
    setValue(value);
}

void SliderRow::setValue(double value) {
    slider_->setValue(value);
    showNumber();
}

void SliderRow::showNumber() {
    const double value = slider_->value();
    const double shown = std::isnan(value) ? 0 : std::clamp(value, -largestNumber, largestNumber);
    auto text = QString::number(std::llround(shown));
    if (!unit_.isEmpty()) {
        text += QLatin1Char(' ') + unit_;
    }
    number_->setText(text);
}

}  // namespace tessellon
