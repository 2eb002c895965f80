// The last step of the tour: where the program is found, and a few switches.
#pragma once

#include "onboarding/note_view.h"
#include "onboarding/tour_step_view.h"
#include "ui/pill_toggle.h"

namespace tessellon {

class LastTouchesStep final : public TourStep {
  public:
    LastTouchesStep(OnboardingModel& model, QWidget* parent);

    void refresh() override;

  private:
    QWidget* makeSwitches();

    PillToggle* launchAtLogin_ = nullptr;
    Note* loginNote_ = nullptr;
};

}  // namespace tessellon
