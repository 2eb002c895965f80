// Pixels of the tray icon: the memory of images, the choice of a tone, and the icon put together.
#include "platform/x11/tray_pixels.h"

#include <algorithm>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon::x11 {
namespace {

using Pixels = std::vector<std::uint32_t>;

constexpr IconColor black = 0x000000;
constexpr IconColor white = 0xffffff;

PixelLayout layout32(bool leastByteFirst) {
    PixelLayout layout{0xff0000, 0xff00, 0xff};
    layout.leastByteFirst = leastByteFirst;
    return layout;
}

TEST(TrayPixels, AreReadInTheOrderOfTheServer) {
    const std::vector<std::uint8_t> memory{0x56, 0x34, 0x12, 0x00};
    EXPECT_EQ(layout32(true).decoded(memory, 1), (Pixels{0xff123456}));
    EXPECT_EQ(layout32(false).decoded(memory, 1), (Pixels{0xff341200}));
    EXPECT_EQ(layout32(true).decoded({memory.data(), 3}, 1), Pixels{}) << "too short";
    EXPECT_EQ(layout32(true).decoded(memory, 2), Pixels{});
    EXPECT_EQ(layout32(true).decoded(memory, 0), Pixels{});
    auto withAlpha = layout32(true);
    withAlpha.alphaMask = 0xff000000;
    EXPECT_EQ(withAlpha.decoded(memory, 1), (Pixels{0x00123456}));
}

TEST(TrayPixels, SurviveTheirWayThroughEveryLayout) {
    PixelLayout sixteen{0xf800, 0x07e0, 0x001f};
    sixteen.bytesPerPixel = 2;
    auto withAlpha = layout32(false);
    withAlpha.alphaMask = 0xff000000;
    // Full and empty channels keep their value however few bits there are. A row of three pixels of
    // two bytes is padded.
    const Pixels extremes{0xffff0000, 0xff00ff00, 0xff0000ff, 0xffffffff, 0xff000000,
                          0xffff00ff, 0xffffff00, 0xff00ffff, 0xff000000};
    for (const auto& layout : {layout32(true), layout32(false), sixteen, withAlpha}) {
        const auto memory = layout.encoded(extremes, 3);
        EXPECT_EQ(memory.size(), layout.rowBytes(3) * 3);
        EXPECT_EQ(layout.decoded(memory, 3), extremes);
    }
    EXPECT_EQ(sixteen.rowBytes(3), 8U);
    const Pixels translucent{0x80402010};
    EXPECT_EQ(withAlpha.decoded(withAlpha.encoded(translucent, 1), 1), translucent);
}

TEST(TrayPixels, WhatTheIconCoversIsNoGround) {
    const Pixels ground{0xff101010, 0xffffffff, 0xff303030, 0xffffffff};
    EXPECT_EQ(averageColor(ground, {0, 0xff000000, 0, 0x01000000}), 0x202020U);
    EXPECT_EQ(averageColor({0xff000000, 0xff204060}), 0x102030U);
    EXPECT_EQ(averageColor(ground, Pixels(4, 0xff000000)), std::nullopt);
    EXPECT_EQ(averageColor({}), std::nullopt);
}

TEST(TrayPixels, TheGlyphStandsOutFromItsGround) {
    const auto onDark = glyphColor(std::nullopt, 0x20242c);
    const auto onLight = glyphColor(std::nullopt, 0xeceff4);
    EXPECT_GT(onDark & 0xffU, 0xf0U);
    EXPECT_LT(onLight & 0xffU, 0x20U);
    EXPECT_EQ(glyphColor(std::nullopt, std::nullopt), onDark) << "most panels are dark";
    // Green is lighter than blue.
    EXPECT_EQ(glyphColor(std::nullopt, 0x00ff00), onLight);
    EXPECT_EQ(glyphColor(std::nullopt, 0x0000ff), onDark);
}

TEST(TrayPixels, TheTraysColorIsTakenUnlessItCannotBeSeen) {
    EXPECT_EQ(glyphColor(0xdfdfdf, 0x303030), 0xdfdfdfU);
    EXPECT_EQ(glyphColor(0xdfdfdf, std::nullopt), 0xdfdfdfU);
    EXPECT_EQ(glyphColor(0x3c3c3c, 0x303030), glyphColor(std::nullopt, 0x303030));
    EXPECT_EQ(glyphColor(white, 0xf6f5f4), glyphColor(std::nullopt, 0xf6f5f4));
}

TEST(TrayPixels, TheGlyphLiesInTheMiddleWithLittleRoom) {
    std::vector<int> asked;
    const IconPainter full = [&](int size, IconColor color) {
        asked.push_back(size);
        return IconImage{size, Pixels(static_cast<std::size_t>(size * size), 0xff000000 | color)};
    };
    for (const int size : {8, 16, 22, 24, 32, 48}) {
        const auto icon = composedIcon(full, size, 0x123456, std::nullopt);
        ASSERT_EQ(icon.pixels.size(), static_cast<std::size_t>(size * size));
        const int glyph = asked.back();
        EXPECT_EQ((size - glyph) % 2, 0) << "in the middle of " << size;
        EXPECT_GE(glyph * 8, size * 7) << "as large as can be in " << size;
        EXPECT_EQ(std::count(icon.pixels.begin(), icon.pixels.end(), 0xff123456), glyph * glyph);
        EXPECT_EQ(icon.pixels[static_cast<std::size_t>(size / 2 * size + size / 2)], 0xff123456);
    }
}

TEST(TrayPixels, TheHighlightIsARoundedGroundUnderTheGlyph) {
    const IconPainter nothing = [](int size, IconColor) {
        return IconImage{size, Pixels(static_cast<std::size_t>(size * size))};
    };
    constexpr int size = 24;
    const auto ground = composedIcon(nothing, size, white, Highlight{}).pixels;
    EXPECT_EQ(ground.front(), 0U) << "the corner is cut";
    constexpr std::uint32_t part = 46;  // 18 % of 255
    EXPECT_EQ(ground[12 * size + 12], part << 24U | part << 16U | part << 8U | part);
    EXPECT_EQ(ground[12 * size], ground[12 * size + 12]) << "it reaches the edge";
    EXPECT_EQ(composedIcon(nothing, size, black, Highlight{}).pixels[12 * size + 12], part << 24U);
    const auto onGray = composedIcon(nothing, size, white, Highlight{0x808080}).pixels;
    EXPECT_EQ(onGray[12 * size + 12], 0xff979797) << "as it would look on this";
    EXPECT_EQ(onGray.front(), 0U);
    // A painter that draws another size than it was asked for.
    const IconPainter wrong = [](int, IconColor) { return IconImage{5, Pixels(3)}; };
    EXPECT_EQ(composedIcon(wrong, size, white, Highlight{}).pixels, ground);
}

TEST(TrayPixels, BlendByTheirAlpha) {
    Pixels below{0xff204060, 0xff204060, 0x00000000, 0xffffffff};
    blendOver(below, {0xffabcdef, 0x00000000, 0x80400000, 0xff000000});
    EXPECT_EQ(below, (Pixels{0xffabcdef, 0xff204060, 0x80400000, 0xff000000}));
    Pixels half{0xffffffff};
    blendOver(half, {0x80000000});
    EXPECT_EQ(half, (Pixels{0xff7f7f7f}));
}

}  // namespace
}  // namespace tessellon::x11
