// Frames of the desktop as the toolkit has them, and back.
#include "platform/qt/screen_coordinates.h"

#include <array>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

// A primary screen of 3840 × 2160 device pixels at a scale of 2, one of 1920 × 1080 at 1 on its
// right, and one of 2880 × 1800 at 1.5 on its left, its top 200 pixels below the others'.
const std::array<QtScreenGeometry, 3> desk{{{QRect(0, 0, 1920, 1080), 2},
                                            {QRect(3840, 0, 1920, 1080), 1},
                                            {QRect(-2880, 200, 1920, 1200), 1.5}}};

TEST(ScreenCoordinates, ShrinkFromTheOriginOfTheirScreen) {
    EXPECT_EQ(toQtGeometry({0, 0, 3840, 2160}, desk), QRect(0, 0, 1920, 1080));
    EXPECT_EQ(toQtGeometry({100, 60, 1000, 500}, desk), QRect(50, 800, 500, 250));
    EXPECT_EQ(toQtGeometry({3840, 1080, 1920, 1080}, desk), QRect(3840, 0, 1920, 1080));
    EXPECT_EQ(toQtGeometry({4000, 1100, 300, 200}, desk), QRect(4000, 860, 300, 200));
    EXPECT_EQ(toQtGeometry({-2880, 160, 2880, 1800}, desk), QRect(-2880, 200, 1920, 1200));
    EXPECT_EQ(toQtGeometry({-1440, 160, 1440, 900}, desk), QRect(-1920, 800, 960, 600));
}

TEST(ScreenCoordinates, ComeBackAsTheyWere) {
    for (const Rect& frame :
         {Rect{200, 400, 1000, 600}, Rect{4000, 1500, 301, 203}, Rect{-2580, 310, 900, 600}}) {
        EXPECT_EQ(fromQtGeometry(toQtGeometry(frame, desk), desk), frame);
    }
}

TEST(ScreenCoordinates, NeighboursStayNeighboursWhereHalfPixelsAreRounded) {
    const auto left = toQtGeometry({0, 0, 641, 2160}, desk);
    const auto right = toQtGeometry({641, 0, 639, 2160}, desk);
    EXPECT_EQ(left.x() + left.width(), right.x());
}

TEST(ScreenCoordinates, OutsideOfAllScreensTheNearestOneCounts) {
    EXPECT_EQ(toQtGeometry({5800, 1080, 100, 1080}, desk), QRect(5800, 0, 100, 1080));
    EXPECT_EQ(toQtGeometry({10, 20, 30, 40}, {}), QRect(10, -60, 30, 40)) << "no screen at all";
}

}  // namespace
}  // namespace tessellon
