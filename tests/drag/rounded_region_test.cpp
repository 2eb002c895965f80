#include "platform/qt/rounded_region.h"

#include <gtest/gtest.h>

namespace tessellon {
namespace {

TEST(RoundedRegion, LooksTheSameAtAllCorners) {
    const QRect rect(10, 20, 101, 60);
    const auto region = roundedRegion(rect, 14);
    EXPECT_EQ(region.boundingRect(), rect);
    int cut = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x) {
            const bool inside = region.contains(QPoint(x, y));
            const int mirroredX = rect.left() + rect.right() - x;
            const int mirroredY = rect.top() + rect.bottom() - y;
            ASSERT_EQ(region.contains(QPoint(mirroredX, y)), inside) << x << ' ' << y;
            ASSERT_EQ(region.contains(QPoint(x, mirroredY)), inside) << x << ' ' << y;
            cut += inside ? 0 : 1;
        }
    }
    // What a circle leaves free of its square.
    EXPECT_NEAR(cut, (4 - 3.14159) * 14 * 14, 12);
}

TEST(RoundedRegion, CopesWithSmallAndSquareRectangles) {
    const QRect rect(0, 0, 40, 10);
    EXPECT_EQ(roundedRegion(rect, 0), QRegion(rect));
    EXPECT_EQ(roundedRegion(rect, -3), QRegion(rect));
    EXPECT_EQ(roundedRegion(rect, 500), roundedRegion(rect, 5)) << "half circles at the ends";
    EXPECT_TRUE(roundedRegion(QRect(0, 0, 0, 10), 5).isEmpty());
    EXPECT_EQ(roundedRegion(QRect(3, 3, 1, 1), 5), QRegion(3, 3, 1, 1));
}

}  // namespace
}  // namespace tessellon
