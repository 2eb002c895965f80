// A drag by a hand that waits for the program at every step. The others move on at the speed of a
// hand, which is too fast for a program that runs under an instrument such as Valgrind.
#include "dragging.h"

namespace tessellon::desktop {
namespace {

using LeisurelyDragTest = Dragging<DesktopTest>;

TEST_F(LeisurelyDragTest, showsTheGridAndSnaps) {
    useProgram();
    const xcb_window_t window = startClock(original);
    pressTitleBar(window);
    // The window manager moves nothing yet: a hand that trembles does not drag.
    dragBy(1, 0);
    program().waitUntilIdle();
    dragBy(60, 40);
    program().waitUntilIdle();
    pressCommand();
    EXPECT_TRUE(waitUntilShown(grid));
    dragTo(leftHalfZone);
    EXPECT_TRUE(waitUntilShown(leftHalf)) << "the preview";
    dragTo(bottomRightZone);
    EXPECT_TRUE(waitUntilShown(bottomRight)) << "the preview";
    drop();
    EXPECT_EQ(desktop().windows().settle(window, bottomRight), bottomRight);
    releaseCommand();
    EXPECT_TRUE(waitUntilNothingIsShown());
    EXPECT_EQ(restored(window).width, original.width);
}

}  // namespace
}  // namespace tessellon::desktop
