#include "platform/x11/tray_pixels.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace tessellon::x11 {
namespace {

constexpr IconColor ink = 0x2b1d14;
constexpr IconColor paper = 0xfffcf7;
constexpr double leastContrast = 2;  // of 21; text that is meant to be read has 4.5
constexpr double highlightOpacity = 0.18;
constexpr std::uint32_t opaque = 0xff;

constexpr std::uint32_t red(std::uint32_t pixel) {
    return (pixel >> 16U) & 0xffU;
}
constexpr std::uint32_t green(std::uint32_t pixel) {
    return (pixel >> 8U) & 0xffU;
}
constexpr std::uint32_t blue(std::uint32_t pixel) {
    return pixel & 0xffU;
}
constexpr std::uint32_t alpha(std::uint32_t pixel) {
    return pixel >> 24U;
}
constexpr std::uint32_t pixelOf(std::uint32_t a, std::uint32_t r, std::uint32_t g,
                                std::uint32_t b) {
    return a << 24U | r << 16U | g << 8U | b;
}

std::uint32_t largest(std::uint32_t mask) {
    return mask >> static_cast<unsigned>(std::countr_zero(mask));
}

std::uint32_t channel(std::uint32_t raw, std::uint32_t mask, std::uint32_t otherwise = 0) {
    if (mask == 0) {
        return otherwise;
    }
    const std::uint64_t value = (raw & mask) >> static_cast<unsigned>(std::countr_zero(mask));
    return static_cast<std::uint32_t>((value * 0xff + largest(mask) / 2) / largest(mask));
}

std::uint32_t masked(std::uint32_t value, std::uint32_t mask) {
    if (mask == 0) {
        return 0;
    }
    const std::uint64_t scaled = (std::uint64_t{value} * largest(mask) + 0x7f) / 0xff;
    return static_cast<std::uint32_t>(scaled << static_cast<unsigned>(std::countr_zero(mask)));
}

double luma(IconColor color) {
    return (0.299 * red(color) + 0.587 * green(color) + 0.114 * blue(color)) / 255;
}

// Relative luminance and contrast as the Web Content Accessibility Guidelines define them.
double luminance(IconColor color) {
    const auto linear = [](std::uint32_t value) {
        const double part = value / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(red(color)) + 0.7152 * linear(green(color)) +
           0.0722 * linear(blue(color));
}

double contrast(IconColor a, IconColor b) {
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

std::uint32_t premultiplied(IconColor color, double opacity) {
    const auto part = [&](std::uint32_t value) {
        return static_cast<std::uint32_t>(std::lround(value * opacity));
    };
    return pixelOf(part(opaque), part(red(color)), part(green(color)), part(blue(color)));
}

// The color that the highlight has on this one.
IconColor mixed(IconColor behind, IconColor color) {
    const auto part = [](std::uint32_t under, std::uint32_t over) {
        return static_cast<std::uint32_t>(
            std::lround(under + (static_cast<double>(over) - under) * highlightOpacity));
    };
    return pixelOf(0, part(red(behind), red(color)), part(green(behind), green(color)),
                   part(blue(behind), blue(color)));
}

// How much of a pixel a square with rounded corners covers, which fills the whole image.
double roundedCoverage(int x, int y, int size) {
    const double radius = size * 0.22;
    const double middle = size / 2.0;
    const double dx = std::max(std::abs(x + 0.5 - middle) - (middle - radius), 0.0);
    const double dy = std::max(std::abs(y + 0.5 - middle) - (middle - radius), 0.0);
    return std::clamp(radius - std::hypot(dx, dy) + 0.5, 0.0, 1.0);
}

std::size_t area(int size) {
    return static_cast<std::size_t>(size) * static_cast<std::size_t>(size);
}

}  // namespace

std::size_t PixelLayout::rowBytes(int width) const {
    const auto used = static_cast<std::size_t>(width) * bytesPerPixel;
    return (used + rowPadding - 1) / rowPadding * rowPadding;
}

std::vector<std::uint32_t> PixelLayout::decoded(std::span<const std::uint8_t> bytes,
                                                int size) const {
    const auto count = static_cast<std::size_t>(size);
    if (size <= 0 || bytes.size() < rowBytes(size) * count) {
        return {};
    }
    std::vector<std::uint32_t> pixels;
    pixels.reserve(area(size));
    for (std::size_t y = 0; y < count; ++y) {
        const auto row = bytes.subspan(y * rowBytes(size), count * bytesPerPixel);
        for (std::size_t x = 0; x < count; ++x) {
            std::uint32_t raw = 0;
            for (std::size_t i = 0; i < bytesPerPixel; ++i) {
                const std::size_t significance = leastByteFirst ? i : bytesPerPixel - 1 - i;
                raw |= std::uint32_t{row[x * bytesPerPixel + i]} << (8 * significance);
            }
            pixels.push_back(pixelOf(channel(raw, alphaMask, opaque), channel(raw, redMask),
                                     channel(raw, greenMask), channel(raw, blueMask)));
        }
    }
    return pixels;
}

std::vector<std::uint8_t> PixelLayout::encoded(const std::vector<std::uint32_t>& pixels,
                                               int size) const {
    const auto count = static_cast<std::size_t>(size);
    std::vector<std::uint8_t> bytes(rowBytes(size) * count);
    for (std::size_t y = 0; y < count; ++y) {
        for (std::size_t x = 0; x < count; ++x) {
            const auto pixel = pixels[y * count + x];
            const auto raw = masked(alpha(pixel), alphaMask) | masked(red(pixel), redMask) |
                             masked(green(pixel), greenMask) | masked(blue(pixel), blueMask);
            for (std::size_t i = 0; i < bytesPerPixel; ++i) {
                const std::size_t significance = leastByteFirst ? i : bytesPerPixel - 1 - i;
                bytes[y * rowBytes(size) + x * bytesPerPixel + i] =
                    static_cast<std::uint8_t>(raw >> (8 * significance));
            }
        }
    }
    return bytes;
}

std::optional<IconColor> averageColor(const std::vector<std::uint32_t>& pixels,
                                      const std::vector<std::uint32_t>& drawn) {
    std::array<std::uint64_t, 3> sums{};
    std::uint64_t count = 0;
    for (std::size_t i = 0; i < pixels.size(); ++i) {
        if (i < drawn.size() && alpha(drawn[i]) != 0) {
            continue;
        }
        sums[0] += red(pixels[i]);
        sums[1] += green(pixels[i]);
        sums[2] += blue(pixels[i]);
        ++count;
    }
    if (count == 0) {
        return std::nullopt;
    }
    const auto part = [&](std::size_t i) { return static_cast<std::uint32_t>(sums[i] / count); };
    return pixelOf(0, part(0), part(1), part(2));
}

IconColor glyphColor(std::optional<IconColor> offered, std::optional<IconColor> behind) {
    if (offered && (!behind || contrast(*offered, *behind) >= leastContrast)) {
        return *offered;
    }
    return behind && luma(*behind) >= 0.5 ? ink : paper;
}

IconImage composedIcon(const IconPainter& painter, int size, IconColor color,
                       const std::optional<Highlight>& highlight) {
    IconImage icon{size, std::vector<std::uint32_t>(area(size))};
    if (highlight) {
        const auto ground = highlight->behind ? mixed(*highlight->behind, color) : color;
        const double opacity = highlight->behind ? 1 : highlightOpacity;
        std::size_t i = 0;
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x) {
                icon.pixels[i++] = premultiplied(ground, opacity * roundedCoverage(x, y, size));
            }
        }
    }
    // Room for the highlight to be seen around the glyph.
    constexpr int leastWithRoom = 20;
    const int room = size < leastWithRoom ? 0 : size / 16;
    const auto glyph = painter(size - 2 * room, color);
    if (glyph.size != size - 2 * room || glyph.pixels.size() != area(glyph.size)) {
        return icon;
    }
    std::vector<std::uint32_t> placed(area(size));
    for (int y = 0; y < glyph.size; ++y) {
        const auto row = glyph.pixels.begin() + static_cast<std::ptrdiff_t>(y) * glyph.size;
        std::copy_n(row, glyph.size,
                    placed.begin() + static_cast<std::ptrdiff_t>(y + room) * size + room);
    }
    blendOver(icon.pixels, placed);
    return icon;
}

void blendOver(std::vector<std::uint32_t>& below, const std::vector<std::uint32_t>& above) {
    for (std::size_t i = 0; i < std::min(below.size(), above.size()); ++i) {
        const auto through = opaque - alpha(above[i]);
        const auto part = [&](std::uint32_t under, std::uint32_t over) {
            return std::min(over + (under * through + opaque / 2) / opaque, opaque);
        };
        below[i] =
            pixelOf(part(alpha(below[i]), alpha(above[i])), part(red(below[i]), red(above[i])),
                    part(green(below[i]), green(above[i])), part(blue(below[i]), blue(above[i])));
    }
}

}  // namespace tessellon::x11
