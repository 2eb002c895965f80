#include "settings/gap_preview_view.h"

#include "settings/settings_view_fixture.h"

namespace tessellon {
namespace {

class GapPreviewTest : public SettingsViewTest {
  protected:
    /// The frames of the windows fill the picture but for the padding, with the gap between them.
    static void expectWindows(const GapPreview& preview, double gap, double padding) {
        const QRectF left = preview.leftWindow();
        const QRectF right = preview.rightWindow();
        EXPECT_DOUBLE_EQ(left.left(), padding);
        EXPECT_DOUBLE_EQ(left.top(), padding);
        EXPECT_DOUBLE_EQ(left.bottom(), 112 - padding);
        EXPECT_DOUBLE_EQ(right.right(), 170 - padding);
        EXPECT_NEAR(right.left() - left.right(), gap, 1e-9);
        EXPECT_NEAR(left.width(), right.width(), 1e-9);
        EXPECT_EQ(left.height(), right.height());
    }
};

TEST_F(GapPreviewTest, ShowsTheGapsAtAReducedScale) {
    expectWindows(GapPreview(8, 8), 3.6, 3.6);
    expectWindows(GapPreview(0, 0), 0, 2);
    expectWindows(GapPreview(40, 40), 18, 18);
    expectWindows(GapPreview(-5, 4), 0, 2);
    EXPECT_EQ(GapPreview(8, 8).size(), QSize(170, 112));
}

TEST_F(GapPreviewTest, GapsThatAreTooLargeLeaveSomethingOfTheWindows) {
    const GapPreview preview(1e6, 1e6);
    EXPECT_GT(preview.leftWindow().width(), 0);
    EXPECT_GT(preview.leftWindow().height(), 0);
    EXPECT_LT(preview.leftWindow().right(), preview.rightWindow().left());
}

TEST_F(GapPreviewTest, ChangesAtOnceWhileHiddenAndInAMomentWhileShown) {
    GapPreview preview(8, 8);
    preview.setGaps(20, 20);
    expectWindows(preview, 9, 9);
    show(preview, preview.sizeHint());
    preview.setGaps(40, 0);
    expectWindows(preview, 9, 9);
    preview.setGaps(0, 40);
    EXPECT_TRUE(QTest::qWaitFor([&] { return preview.leftWindow().left() == 18; }));
    expectWindows(preview, 0, 18);
}

}  // namespace
}  // namespace tessellon
