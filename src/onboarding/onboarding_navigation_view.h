// The bar below the steps of the tour, with the buttons that move between them.
#pragma once

#include "onboarding/onboarding_model.h"
#include "ui/pill_button.h"

#include <QWidget>

namespace tessellon {

class OnboardingNavigation : public QWidget {
  public:
    /// The model must outlive the bar.
    explicit OnboardingNavigation(OnboardingModel& model, QWidget* parent = nullptr);

    /// Shows the buttons of the model's step.
    void refresh();

    /// The button that goes on; disabled while that is not possible.
    PillButton& primary() { return *primary_; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    OnboardingModel& model_;
    PillButton* back_;
    PillButton* skip_;
    PillButton* primary_;
};

}  // namespace tessellon
