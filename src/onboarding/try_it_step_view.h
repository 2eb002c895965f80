// The step of the tour in which the user tries every way to snap.
#pragma once

#include "onboarding/task_row_view.h"
#include "onboarding/tour_step_view.h"
#include "ui/pill_button.h"

#include <QWidget>
#include <vector>

namespace tessellon {

class TryItStep final : public TourStep {
  public:
    TryItStep(OnboardingModel& model, QWidget* parent);

    void refresh() override;

  private:
    void addOffer();

    std::vector<TaskRow*> rows_;
    TextLabel* offerText_ = nullptr;
    PillButton* offer_ = nullptr;
};

}  // namespace tessellon
