// What the tray icon computes about pixels: how they lie in the memory of an image of the X server,
// which color stands out from a background, and the icon put together.
#pragma once

#include "platform/tray_icon.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace tessellon::x11 {

/// How the pixels of a visual lie in an image in Z format. What no mask of a color covers in a
/// visual of 32 bits is its alpha channel.
struct PixelLayout {
    std::uint32_t redMask = 0;
    std::uint32_t greenMask = 0;
    std::uint32_t blueMask = 0;
    std::uint32_t alphaMask = 0;  // 0: every pixel is opaque
    std::size_t bytesPerPixel = 4;
    std::size_t rowPadding = 4;  // rows are filled up to a multiple of so many bytes
    bool leastByteFirst = true;

    /// Bytes of a row of so many pixels.
    std::size_t rowBytes(int width) const;

    /// The image as 0xAARRGGBB; empty when `bytes` are too few for size × size pixels.
    std::vector<std::uint32_t> decoded(std::span<const std::uint8_t> bytes, int size) const;

    /// The bytes of an image of size × size pixels.
    std::vector<std::uint8_t> encoded(const std::vector<std::uint32_t>& pixels, int size) const;
};

/// The average color of what is behind an icon; nothing when no pixel counts. Pixels that `drawn`
/// covers are the icon's own and do not count; an empty `drawn` covers none.
std::optional<IconColor> averageColor(const std::vector<std::uint32_t>& pixels,
                                      const std::vector<std::uint32_t>& drawn = {});

/// The color for a glyph: what the tray offers, unless that could hardly be told from what is
/// behind; else nearly black on light and nearly white on dark or unknown ground.
IconColor glyphColor(std::optional<IconColor> offered, std::optional<IconColor> behind);

/// The ground under the glyph of an icon whose panel is open.
struct Highlight {
    /// What the ground is mixed with; nothing lets that shine through.
    std::optional<IconColor> behind;
};

/// The icon at this size: the glyph with a little room around it where there is some to spare, and
/// when highlighted with a rounded ground of a little of its color. A glyph of another size than
/// was asked for is left out.
IconImage composedIcon(const IconPainter& painter, int size, IconColor color,
                       const std::optional<Highlight>& highlight);

/// Puts premultiplied pixels over others.
void blendOver(std::vector<std::uint32_t>& below, const std::vector<std::uint32_t>& above);

}  // namespace tessellon::x11
