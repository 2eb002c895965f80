// Values of window properties, made from the raw bytes that a client stored. Clients store
// anything, so everything here takes any bytes of any format and gives nothing for what makes no
// sense.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// A property as it came from the server. The bytes belong to the reply.
struct RawProperty {
    xcb_atom_t type = XCB_ATOM_NONE;  // XCB_ATOM_NONE: the window has no such property
    std::uint8_t format = 0;          // bits of one item: 8, 16 or 32
    std::span<const std::uint8_t> bytes;

    bool exists() const { return type != XCB_ATOM_NONE; }
};

/// The property of a reply; one that does not exist for a null reply.
RawProperty rawProperty(const xcb_get_property_reply_t* reply);

/// The 32-bit items; empty for other formats.
std::vector<std::uint32_t> cardinals(const RawProperty& property);

/// The first 32-bit item, or nothing.
std::optional<std::uint32_t> firstCardinal(const RawProperty& property);

/// Widths of the four edges of a frame or shadow, in the order of _NET_FRAME_EXTENTS.
struct Extents {
    std::int32_t left = 0;
    std::int32_t right = 0;
    std::int32_t top = 0;
    std::int32_t bottom = 0;
    bool operator==(const Extents&) const = default;
};

/// Nothing unless there are four widths that a screen could hold.
std::optional<Extents> extents(const RawProperty& property);

/// Text as UTF-8 up to the first NUL: STRING is read as Latin-1, anything else as UTF-8 with what
/// is invalid replaced.
std::string text(const RawProperty& property);

/// The two parts of WM_CLASS (ICCCM 4.1.2.5); empty where they are missing.
struct WindowClass {
    std::string instance;
    std::string name;
    bool operator==(const WindowClass&) const = default;
};
WindowClass windowClass(const RawProperty& property);

/// Space that a dock reserves at the edges of the root window, with the range along each edge
/// (_NET_WM_STRUT_PARTIAL); the ranges of a plain _NET_WM_STRUT reach everywhere.
struct Strut {
    std::int64_t left = 0, right = 0, top = 0, bottom = 0;
    std::int64_t leftStart = 0, leftEnd = 0, rightStart = 0, rightEnd = 0;
    std::int64_t topStart = 0, topEnd = 0, bottomStart = 0, bottomEnd = 0;
    bool operator==(const Strut&) const = default;
};

/// Nothing when neither property holds a strut that reserves anything.
std::optional<Strut> strut(const RawProperty& partial, const RawProperty& plain);

/// What WM_NORMAL_HINTS (ICCCM 4.1.2.3) says about sizes that the client accepts.
struct SizeHints {
    std::int32_t widthIncrement = 1;
    std::int32_t heightIncrement = 1;
    std::int32_t minWidth = 0;
    std::int32_t minHeight = 0;
    bool operator==(const SizeHints&) const = default;
};
SizeHints sizeHints(const RawProperty& property);

}  // namespace tessellon::x11
