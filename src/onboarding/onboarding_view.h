// The welcome tour as it is drawn: a step, and the bar that moves between the steps.
#pragma once

#include "base/token.h"
#include "onboarding/onboarding_model.h"
#include "onboarding/onboarding_navigation_view.h"
#include "onboarding/tour_step_view.h"

#include <QWidget>

namespace tessellon {

class PageScroll;

/// Where the window is lower than it should be, the step scrolls and the bar stays.
class OnboardingView : public QWidget {
  public:
    /// In logical pixels.
    static constexpr QSize contentSize{640, 700};

    /// The model must outlive the view, which stops it when it is not to be seen any more.
    explicit OnboardingView(OnboardingModel& model, QWidget* parent = nullptr);
    OnboardingView(const OnboardingView&) = delete;
    OnboardingView& operator=(const OnboardingView&) = delete;
    ~OnboardingView() override;

    QSize sizeHint() const override { return contentSize; }
    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void refresh();
    void showStep();
    void announce();
    void focusBestControl();
    bool scroll(int key);

    OnboardingModel& model_;
    PageScroll* scroll_;
    OnboardingNavigation* navigation_;
    TourStep* shown_ = nullptr;
    int shownStep_ = -1;
    Qt::FocusReason lastUse_ = Qt::ActiveWindowFocusReason;
    Token changed_;
};

}  // namespace tessellon
