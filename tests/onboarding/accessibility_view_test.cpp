// Every step of the tour, as it is found out without eyes or without a pointer.
#include "fakes/accessibility_walk.h"
#include "onboarding/onboarding_view.h"
#include "onboarding_fixture.h"
#include "ui/ui_fixture.h"

namespace tessellon {
namespace {

class OnboardingAccessibility : public UiTest,
                                protected Onboarding,
                                public testing::WithParamInterface<int> {};

TEST_P(OnboardingAccessibility, EveryControlIsDescribedAndReachedByTab) {
    OnboardingView view(start(GetParam()));
    view.resize(OnboardingView::contentSize);
    view.show();
    view.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&view));
    AccessibilityWalk walk(view);
    walk.expectControlsToBeDescribed();
    walk.expectTabToReachThem();
}

INSTANTIATE_TEST_SUITE_P(Step, OnboardingAccessibility, testing::Range(0, 4));

}  // namespace
}  // namespace tessellon
