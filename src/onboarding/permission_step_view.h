// The step of the tour that helps the user to the permission to move windows.
#pragma once

#include "onboarding/greeting_view.h"
#include "onboarding/note_view.h"
#include "onboarding/settings_picture_view.h"
#include "onboarding/state_pill_view.h"
#include "onboarding/tour_step_view.h"
#include "ui/pill_button.h"

namespace tessellon {

class PermissionStep final : public TourStep {
  public:
    PermissionStep(OnboardingModel& model, QWidget* parent);

    void refresh() override;
    QWidget* firstControl() const override { return open_; }

  private:
    QWidget* makeList();

    Greeting* greeting_;
    SettingsPicture* picture_;
    PillButton* open_;
    StatePill* pill_;
    Note* note_;
};

}  // namespace tessellon
