// The welcome tour as it is drawn.
#pragma once

#include "base/token.h"
#include "onboarding/onboarding_model.h"

#include <QWidget>

namespace tessellon {

class OnboardingView : public QWidget {
  public:
    /// In logical pixels.
    static constexpr QSize contentSize{640, 700};

    /// The model must outlive the view.
    explicit OnboardingView(OnboardingModel& model, QWidget* parent = nullptr);

    QSize sizeHint() const override { return contentSize; }
};

}  // namespace tessellon
