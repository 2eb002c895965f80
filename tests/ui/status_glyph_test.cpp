// The mark of the status item: its measures, and what trays get of it.
#include "ui/status_glyph.h"

#include "ui_fixture.h"

#include <cstddef>

namespace tessellon {
namespace {

using StatusGlyph = UiTest;

enum class Pixel { empty, partial, full };

Pixel pixelAt(const IconImage& image, int x, int y) {
    const auto alpha = image.pixels[static_cast<std::size_t>(y * image.size + x)] >> 24U;
    // A shade that nobody sees is left to the arithmetic of coverage.
    return alpha < 8 ? Pixel::empty : alpha > 247 ? Pixel::full : Pixel::partial;
}

TEST_F(StatusGlyph, IsDrawnByItsMeasures) {
    // Ten pixels for each point.
    const QImage image = painted({180, 180}, [](QPainter& painter) {
        paintStatusGlyph(painter, QRectF(0, 0, 180, 180), Qt::black);
    });
    const auto covered = [&image](double x, double y) {
        return image.pixelColor(static_cast<int>(x * 10), static_cast<int>(y * 10)).alpha() == 255;
    };
    const auto empty = [&image](double x, double y) {
        return image.pixelColor(static_cast<int>(x * 10), static_cast<int>(y * 10)).alpha() == 0;
    };
    // The tall tile: 1.5 wide lines around its edge, and the radius of its corners.
    EXPECT_TRUE(empty(0.8, 14) && covered(1.1, 14) && covered(2.3, 14) && empty(2.7, 14));
    EXPECT_TRUE(empty(8.3, 14) && covered(8.7, 14) && covered(9.8, 14) && empty(10.2, 14));
    EXPECT_TRUE(empty(5.5, 0.8) && covered(5.5, 1.2) && covered(5.5, 16.8) && empty(5.5, 17.2));
    EXPECT_TRUE(empty(1.3, 1.3));
    // The pulse through its corners, and nothing beside it.
    for (const QPointF& on : {QPointF(3.5, 9), QPointF(5.5, 5.6), QPointF(6, 8.75),
                              QPointF(6.5, 11.9), QPointF(7.8, 9)}) {
        EXPECT_TRUE(covered(on.x(), on.y())) << on.x();
    }
    EXPECT_TRUE(empty(3.5, 7) && empty(7.5, 11) && empty(5.5, 12.5));
    // The solid tiles.
    EXPECT_TRUE(empty(10.3, 4) && covered(10.7, 4) && covered(16.8, 4) && empty(17.2, 4));
    EXPECT_TRUE(empty(13.5, 0.8) && covered(13.5, 1.2) && covered(13.5, 8) && empty(13.5, 8.5));
    EXPECT_TRUE(empty(13.5, 9.5) && covered(13.5, 10) && covered(13.5, 16.8) && empty(13.5, 17.2));
    EXPECT_TRUE(empty(10.6, 1.1)) << "round corners";
}

TEST_F(StatusGlyph, FitsIntoTheMiddleInItsColor) {
    const QImage image = painted({60, 40}, [](QPainter& painter) {
        paintStatusGlyph(painter, QRectF(0, 0, 60, 36), QColor(200, 40, 90));
    });
    EXPECT_TRUE(shows(image, 12 + 27, 8, QColor(200, 40, 90)));
    EXPECT_EQ(image.pixelColor(12, 18).alpha(), 0);
    EXPECT_EQ(image.pixelColor(50, 18).alpha(), 0);
}

TEST_F(StatusGlyph, TraysGetItWithSharpEdges) {
    for (const int size : {16, 20, 22, 24, 32, 48, 64}) {
        const IconImage image = statusGlyphImage(size, 0xE0E0E0);
        ASSERT_EQ(image.size, size);
        ASSERT_EQ(image.pixels.size(), static_cast<std::size_t>(size * size));
        // Along a line through the tall tile and the lower right one, edges are whole pixels.
        const int y = size * 27 / 36;
        int runs = 0;
        auto last = Pixel::empty;
        for (int x = 0; x < size; ++x) {
            const auto pixel = pixelAt(image, x, y);
            runs += pixel == Pixel::full && last != Pixel::full ? 1 : 0;
            last = pixel;
            const bool isRightOfTheTallTile = x > size * 10 / 18 + 1;
            EXPECT_TRUE(!isRightOfTheTallTile || pixel != Pixel::partial) << size << ": " << x;
        }
        EXPECT_EQ(runs, 3) << size << ": two sides of the tall tile, one solid tile";
        // The gap between the solid tiles is a whole one, in the middle.
        const int column = size * 14 / 18;
        int gap = 0;
        for (int row = size / 4; row < size * 3 / 4; ++row) {
            gap += pixelAt(image, column, row) == Pixel::empty ? 1 : 0;
            EXPECT_NE(pixelAt(image, column, row), Pixel::partial) << size << ": " << row;
        }
        EXPECT_GE(gap, 1) << size;
        EXPECT_LE(gap, size / 8) << size;
        for (int i = 0; i < size; ++i) {
            EXPECT_EQ(pixelAt(image, i, 0), Pixel::empty) << size;
            EXPECT_EQ(pixelAt(image, i, size - 1), Pixel::empty) << size;
        }
    }
}

TEST_F(StatusGlyph, KeepsItsMeasuresInItsOwnSize) {
    const auto alphaAt = [](const IconImage& image, int x, int y) {
        return static_cast<int>(image.pixels[static_cast<std::size_t>(y * image.size + x)] >> 24U);
    };
    const IconImage image = statusGlyphImage(18, 0);
    ASSERT_EQ(image.size, 18);
    // Half of the columns at 2 and 10, a quarter of row 8 and of row 9, as the figures have it.
    EXPECT_NEAR(alphaAt(image, 2, 4), 128, 12);
    EXPECT_NEAR(alphaAt(image, 10, 13), 128, 12);
    EXPECT_NEAR(alphaAt(image, 13, 8), 64, 12);
    EXPECT_NEAR(alphaAt(image, 13, 9), 64, 12);
    // In twice the size halves are whole pixels.
    const IconImage twice = statusGlyphImage(36, 0);
    EXPECT_EQ(alphaAt(twice, 4, 8), 255);
    EXPECT_EQ(alphaAt(twice, 5, 8), 0);
    EXPECT_EQ(alphaAt(twice, 20, 28), 0);
    EXPECT_EQ(alphaAt(twice, 21, 28), 255);
}

TEST_F(StatusGlyph, PicturesArePremultiplied) {
    const IconImage image = statusGlyphImage(22, 0xFF8000);
    int partly = 0;
    for (const auto pixel : image.pixels) {
        const int alpha = static_cast<int>(pixel >> 24U);
        const int red = static_cast<int>(pixel >> 16U & 0xFFU);
        EXPECT_NEAR(red, alpha, 1);
        EXPECT_NEAR(static_cast<int>(pixel >> 8U & 0xFFU), alpha / 2, 2);
        EXPECT_EQ(pixel & 0xFFU, 0U);
        partly += alpha > 0 && alpha < 255 ? 1 : 0;
    }
    EXPECT_GT(partly, 0) << "round corners are smooth";
}

TEST_F(StatusGlyph, SizesThatAreNoneGiveNothing) {
    for (const int size : {-1, 0, 100000}) {
        EXPECT_EQ(statusGlyphImage(size, 0).size, 0);
        EXPECT_TRUE(statusGlyphImage(size, 0).pixels.empty());
    }
    EXPECT_EQ(statusGlyphImage(1, 0).pixels.size(), 1U);
}

}  // namespace
}  // namespace tessellon
