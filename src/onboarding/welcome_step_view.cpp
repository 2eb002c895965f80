#include "onboarding/welcome_step_view.h"

#include "onboarding/greeting_view.h"
#include "onboarding/snapping_picture_view.h"
#include "onboarding/spoken_text_view.h"
#include "ui/palette.h"
#include "ui/text_label.h"

#include <QHBoxLayout>

namespace tessellon {
namespace {

constexpr double legendSize = 12;
constexpr int legendSpacing = 6;
constexpr int chipSpacing = 8;
constexpr int pictureSpacing = 24;

}  // namespace

WelcomeStep::WelcomeStep(OnboardingModel& model, QWidget* parent) : TourStep(model, parent) {
    auto* const greeting = new Greeting(this);
    greeting->greet(palette::amber, Blush::rosy, QStringLiteral("Hi there!"), Symbol::handWave);
    column().addWidget(greeting);
    addHeader(QStringLiteral("Windows that snap into place."),
              QStringLiteral("Tessellon is a tiny menu bar app that puts any window exactly where "
                             "you want it. Hold ⌘ and drag it onto a zone, press a shortcut, or "
                             "pick a spot from the launcher."));

    auto* const chips = new QHBoxLayout;
    chips->setSpacing(chipSpacing);
    auto* const drag =
        new Chip(QStringLiteral("⌘-drag to snap"), palette::teal, ChipDot::leading, this);
    shortcuts_ = new Chip({}, palette::amber, ChipDot::leading, this);
    auto* const launcher =
        new Chip(QStringLiteral("Right ⌘ + / launcher"), palette::lavender, ChipDot::leading, this);
    for (auto* const chip : {drag, shortcuts_, launcher}) {
        chips->addWidget(chip);
    }
    drag->setAccessibleName(spokenText(drag->text()));
    launcher->setAccessibleName(spokenText(launcher->text()));
    chips->addStretch();
    column().addLayout(chips);
    // Keyboards here have other names on these keys.
    column().addSpacing(legendSpacing);
    column().addWidget(new TextLabel(QStringLiteral("⌘ is the Super key, ⌃ Control and ⌥ Alt."),
                                     legendSize, QFont::Medium, palette::muted, TextWrap::words,
                                     this));
    column().addSpacing(pictureSpacing);
    column().addWidget(new SnappingPicture(this), 1);
    refresh();
}

void WelcomeStep::refresh() {
    const auto modifiers = QString::fromStdString(model().shortcutModifiers());
    shortcuts_->setText(modifiers.isEmpty() ? QStringLiteral("Shortcuts")
                                            : modifiers + QStringLiteral(" shortcuts"));
    shortcuts_->setAccessibleName(spokenText(shortcuts_->text()));
}

}  // namespace tessellon
