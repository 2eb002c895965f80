// The preview that the settings show for a moment.
#include "settings/snap_preview_demo.h"

#include "app/preferences.h"
#include "drag/fake_drag_views.h"
#include "engine/engine_fixture.h"
#include "platform/memory/manual_run_loop.h"

#include <memory>
#include <optional>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

class SnapPreviewDemoTest : public EngineTest {
  protected:
    SnapPreviewDemoTest() {
        desktop_.setScreens({screen(1, {0, 0, 1920, 1080}, {0, 0, 1920, 1055}),
                             screen(2, {1920, 80, 1000, 1000}, {1920, 80, 1000, 1000})});
        demo.emplace(engine(), loop, [this] {
            auto made = std::make_unique<FakeDragViews>();
            views = made.get();
            return made;
        });
    }
    bool isShown() const { return views != nullptr && views->isPreviewShown(); }

    ManualRunLoop loop;
    FakeDragViews* views = nullptr;
    std::optional<SnapPreviewDemo> demo;
};

TEST_F(SnapPreviewDemoTest, ShowsTheLeftHalfOfTheMainScreenForAMoment) {
    EXPECT_EQ(views, nullptr);
    defaults_.setBool(preference::dragEnabled, false);
    desktop_.setMainScreen(2);
    defaults_.setDouble(preference::padding, 10);
    defaults_.setDouble(preference::gap, 20);
    demo->show();
    ASSERT_TRUE(isShown());
    EXPECT_EQ(views->previews[0]->action, SnapAction::leftHalf);
    EXPECT_EQ(views->previews[0]->frame(), (Rect{1930, 90, 480, 980}));
    loop.advance(Seconds(1.39));
    EXPECT_TRUE(isShown());
    loop.advance(Seconds(0.02));
    EXPECT_FALSE(isShown());

    // The next one looks at the desktop again, with the same panel.
    desktop_.setMainScreen(1);
    defaults_.setDouble(preference::gap, -6);
    demo->show();
    ASSERT_EQ(views->previews.size(), 1U);
    EXPECT_EQ(views->previews[0]->frame(), (Rect{10, 10, 950, 1035}));
}

TEST_F(SnapPreviewDemoTest, PressingAgainBeginsTheMomentAnew) {
    demo->show();
    loop.advance(Seconds(1));
    demo->show();
    loop.advance(Seconds(1));
    EXPECT_TRUE(isShown());
    EXPECT_EQ(views->previews[0]->shows, 1);
    loop.advance(Seconds(0.5));
    EXPECT_FALSE(isShown());
}

TEST_F(SnapPreviewDemoTest, NeedsAScreen) {
    desktop_.setScreens({});
    demo->show();
    EXPECT_EQ(views, nullptr);
}

TEST_F(SnapPreviewDemoTest, EndsWithItsOwner) {
    demo->show();
    demo->hide();
    EXPECT_FALSE(isShown());
    demo->show();
    EXPECT_TRUE(isShown());
    demo.reset();
    loop.advance(Seconds(2));  // nothing is left that would touch what is gone
}

}  // namespace
}  // namespace tessellon
