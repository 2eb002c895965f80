// The first step of the tour: what the program does, and the three ways to have it done.
#pragma once

#include "onboarding/tour_step_view.h"
#include "ui/chip.h"

namespace tessellon {

class WelcomeStep final : public TourStep {
  public:
    WelcomeStep(OnboardingModel& model, QWidget* parent);

    void refresh() override;

  private:
    Chip* shortcuts_;
};

}  // namespace tessellon
