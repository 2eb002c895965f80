#include "ui/mask.h"

#include "ui/palette.h"
#include "ui_fixture.h"

namespace tessellon {
namespace {

using Mask = UiTest;

TEST_F(Mask, KeepsThePixelsOfTheDrawnShapeAtAllCorners) {
    const QRect rect(10, 20, 101, 60);
    const auto mask = roundedMask(rect, 14);
    EXPECT_EQ(mask.boundingRect(), rect);
    const auto image = painted(
        {130, 100}, [&](QPainter& painter) { paintRoundedRect(painter, rect, 14, palette::teal); });
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = image.pixelColor(x, y).alpha();
            if (std::abs(alpha - 128) > 12) {
                ASSERT_EQ(mask.contains(QPoint(x, y)), alpha > 128) << x << ' ' << y;
            }
            const QPoint mirrored(rect.left() + rect.right() - x, rect.top() + rect.bottom() - y);
            ASSERT_EQ(mask.contains(QPoint(x, y)), mask.contains(mirrored)) << x << ' ' << y;
        }
    }
}

TEST_F(Mask, ARingIsEquallyWideEverywhereAndOpaque) {
    const QRect rect(3, 5, 120, 80);
    const double radius = 14;
    for (const int width : {4, 7}) {
        const auto ring = ringMask(rect, radius, width);
        const auto image = painted({130, 90}, [&](QPainter& painter) {
            paintRing(painter, rect, radius, width, {{palette::ink, 2}, palette::teal});
        });
        EXPECT_EQ(ring.boundingRect(), rect);
        EXPECT_TRUE((ring - roundedMask(rect, radius)).isEmpty());
        // Straight edges.
        EXPECT_TRUE(ring.contains(QPoint(60, 5 + width - 1)));
        EXPECT_FALSE(ring.contains(QPoint(60, 5 + width)));
        EXPECT_TRUE(ring.contains(QPoint(122 - width + 1, 45)));
        EXPECT_FALSE(ring.contains(QPoint(122 - width, 45)));
        // The diagonal of a corner, in whole and half steps.
        double thickness = 0;
        int light = 0;
        for (int step = 0; step < 40; ++step) {
            const QPoint pixel(3 + step / 2, 5 + (step + 1) / 2);
            if (ring.contains(pixel)) {
                thickness += std::sqrt(0.5);
                light += image.pixelColor(pixel).green() > palette::ink.green() + 60 ? 1 : 0;
            }
        }
        EXPECT_NEAR(thickness, width, 0.8);
        EXPECT_GE(light, 1) << "the light line does not break";
        for (const QRect& part : ring) {
            for (int x = part.left(); x <= part.right(); ++x) {
                for (int y = part.top(); y <= part.bottom(); ++y) {
                    ASSERT_EQ(image.pixelColor(x, y).alpha(), 255) << x << ' ' << y;
                }
            }
        }
    }
}

TEST_F(Mask, CopesWithSmallAndSquareRectangles) {
    const QRect rect(0, 0, 40, 10);
    EXPECT_EQ(roundedMask(rect, 0), QRegion(rect));
    EXPECT_EQ(roundedMask(rect, -3), QRegion(rect));
    EXPECT_EQ(roundedMask(rect, 500), roundedMask(rect, 5)) << "half circles at the ends";
    EXPECT_TRUE(roundedMask(QRect(0, 0, 0, 10), 5).isEmpty());
    EXPECT_EQ(roundedMask(QRect(3, 3, 1, 1), 5), QRegion(3, 3, 1, 1));
    EXPECT_EQ(ringMask(rect, 4, 5), roundedMask(rect, 4)) << "nothing inside is left";
    EXPECT_EQ(ringMask(rect, 0, 1), QRegion(rect) - QRegion(1, 1, 38, 8));
}

}  // namespace
}  // namespace tessellon
