// Rectangles at their edges.
#include "base/geometry.h"

#include <limits>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

TEST(Rect, RoundsOutwardAlsoBelowZero) {
    EXPECT_EQ((Rect{0.5, 1, 10, 10.25}.integral()), (Rect{0, 1, 11, 11}));
    EXPECT_EQ((Rect{-0.5, -1.25, 1, 1}.integral()), (Rect{-1, -2, 2, 2}));
    EXPECT_EQ((Rect{-3, 4, 5, 6}.integral()), (Rect{-3, 4, 5, 6}));
}

TEST(Rect, SharesNothingWithANeighbour) {
    const Rect left{0, 0, 100, 100};
    EXPECT_EQ(left.intersection({100, 0, 100, 100}), std::nullopt);
    EXPECT_EQ(left.intersection({99, 50, 100, 100}), (Rect{99, 50, 1, 50}));
    EXPECT_EQ(left.intersection({10, 10, 0, 50}), std::nullopt);
}

TEST(Rect, OwnsItsLeftAndTopEdgesOnly) {
    const Rect rect{10, 20, 30, 40};
    EXPECT_TRUE(rect.contains({10, 20}));
    EXPECT_FALSE(rect.contains({40, 20}));
    EXPECT_FALSE(rect.contains({10, 60}));
}

TEST(Rect, ComparesEveryNumberStrictly) {
    const Rect rect{10, 20, 30, 40};
    EXPECT_TRUE(nearlyEqual(rect, {12.9, 17.1, 32.9, 37.1}, 3));
    EXPECT_FALSE(nearlyEqual(rect, {13, 20, 30, 40}, 3));
    EXPECT_FALSE(nearlyEqual(rect, {10, 17, 30, 40}, 3));
    EXPECT_FALSE(nearlyEqual(rect, {10, 20, 33, 40}, 3));
    EXPECT_FALSE(nearlyEqual(rect, {10, 20, 30, 37}, 3));
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(nearlyEqual(rect, {nan, 20, 30, 40}, 3));
}

}  // namespace
}  // namespace tessellon
