#include "platform/x11/tray_plug.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>

namespace tessellon::x11 {
namespace {

constexpr int wantedSize = 22;    // pixels; what most trays give
constexpr int smallestSide = 8;   // below there is nothing to recognize
constexpr int largestSide = 128;  // larger icons get room around them
constexpr std::uint32_t mapped = 1;

std::optional<PixelLayout> layoutOf(const Connection& connection, const xcb_visualtype_t& visual,
                                    std::uint8_t depth) {
    if (visual._class != XCB_VISUAL_CLASS_TRUE_COLOR) {
        return std::nullopt;
    }
    const auto* setup = xcb_get_setup(connection.xcb());
    const std::span formats(xcb_setup_pixmap_formats(setup),
                            static_cast<std::size_t>(xcb_setup_pixmap_formats_length(setup)));
    const auto format = std::find_if(formats.begin(), formats.end(),
                                     [&](const auto& each) { return each.depth == depth; });
    if (format == formats.end() || format->bits_per_pixel % 8 != 0 || format->bits_per_pixel > 32) {
        return std::nullopt;
    }
    PixelLayout layout;
    layout.redMask = visual.red_mask;
    layout.greenMask = visual.green_mask;
    layout.blueMask = visual.blue_mask;
    if (depth == 32) {
        layout.alphaMask = ~(visual.red_mask | visual.green_mask | visual.blue_mask);
    }
    layout.bytesPerPixel = format->bits_per_pixel / 8U;
    layout.rowPadding = std::max(format->scanline_pad / 8U, 1U);
    layout.leastByteFirst = setup->image_byte_order == XCB_IMAGE_ORDER_LSB_FIRST;
    return layout;
}

}  // namespace

std::optional<TrayVisual> findTrayVisual(const Connection& connection, xcb_visualid_t id) {
    for (auto depths = xcb_screen_allowed_depths_iterator(&connection.screen()); depths.rem > 0;
         xcb_depth_next(&depths)) {
        for (auto visuals = xcb_depth_visuals_iterator(depths.data); visuals.rem > 0;
             xcb_visualtype_next(&visuals)) {
            if (visuals.data->visual_id != id) {
                continue;
            }
            const auto depth = depths.data->depth;
            const auto layout = layoutOf(connection, *visuals.data, depth);
            return layout ? std::optional(TrayVisual{id, depth, *layout}) : std::nullopt;
        }
    }
    return std::nullopt;
}

TrayPlug::TrayPlug(const Connection& connection, const TrayVisual& visual, Ground ground,
                   const std::string& name)
    : connection_(connection),
      visual_(visual),
      ground_(ground),
      window_(xcb_generate_id(connection.xcb())),
      context_(xcb_generate_id(connection.xcb())),
      width_(wantedSize),
      height_(wantedSize),
      color_(glyphColor({}, {})) {
    auto* const xcb = connection_.xcb();
    if (visual_.id != connection_.screen().root_visual) {
        colormap_ = xcb_generate_id(xcb);
        xcb_create_colormap(xcb, XCB_COLORMAP_ALLOC_NONE, colormap_, connection_.root(),
                            visual_.id);
    }
    xcb_create_window_value_list_t values{};
    std::uint32_t mask = XCB_CW_BORDER_PIXEL | XCB_CW_EVENT_MASK | XCB_CW_COLORMAP;
    if (ground_ == Ground::translucent) {
        mask |= XCB_CW_BACK_PIXEL;  // 0, which is transparent
    }
    // The release is taken so that the tray does not get it without its press.
    values.event_mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_EXPOSURE |
                        XCB_EVENT_MASK_BUTTON_PRESS | XCB_EVENT_MASK_BUTTON_RELEASE |
                        XCB_EVENT_MASK_ENTER_WINDOW;
    values.colormap =
        colormap_ != XCB_NONE ? colormap_ : xcb_colormap_t{connection_.screen().default_colormap};
    xcb_create_window_aux(xcb, visual_.depth, window_, connection_.root(), 0, 0, wantedSize,
                          wantedSize, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, visual_.id, mask, &values);
    // What is copied to the window comes from memory: nothing of it is ever exposed.
    constexpr std::uint32_t off = 0;
    xcb_create_gc(xcb, context_, window_, XCB_GC_GRAPHICS_EXPOSURES, &off);
    setProperties(name);
}

TrayPlug::~TrayPlug() {
    auto* const xcb = connection_.xcb();
    xcb_destroy_window(xcb, window_);
    xcb_free_gc(xcb, context_);
    if (colormap_ != XCB_NONE) {
        xcb_free_colormap(xcb, colormap_);
    }
    xcb_flush(xcb);
}

void TrayPlug::setProperties(const std::string& name) {
    auto* const xcb = connection_.xcb();
    const auto setText = [&](xcb_atom_t property, xcb_atom_t type, const std::string& text) {
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window_, property, type, 8,
                            static_cast<std::uint32_t>(text.size()), text.data());
    };
    setText(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, name);
    setText(connection_.atom(Atom::netWmName), connection_.atom(Atom::utf8String), name);
    std::string instance = name;
    std::transform(instance.begin(), instance.end(), instance.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    setText(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, instance + '\0' + name + '\0');
    // ICCCM 4.1.2.3: flags, four unused words, the smallest width and height, and the rest unset.
    constexpr std::uint32_t hasMinimum = 1U << 4U;
    constexpr std::array<std::uint32_t, 18> hints{hasMinimum, 0, 0, 0, 0, wantedSize, wantedSize};
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window_, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, 32, hints.size(), hints.data());
    // XEmbed: the version of the protocol, and that whoever takes the window in shall map it.
    constexpr std::array<std::uint32_t, 2> embedding{0, mapped};
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window_, connection_.atom(Atom::xembedInfo),
                        connection_.atom(Atom::xembedInfo), 32, embedding.size(), embedding.data());
}

bool TrayPlug::embedIn(std::uint8_t parentDepth) {
    isEmbedded_ = true;
    if (ground_ == Ground::translucent) {
        return true;
    }
    if (parentDepth != visual_.depth) {
        return false;
    }
    constexpr std::uint32_t ofParent = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    xcb_change_window_attributes(connection_.xcb(), window_, XCB_CW_BACK_PIXMAP, &ofParent);
    return true;
}

void TrayPlug::setSize(int width, int height) {
    width_ = width;
    height_ = height;
    drawn_ = {};
}

int TrayPlug::side() const {
    const int room = std::min({width_, height_, largestSide});
    return room < smallestSide ? 0 : room;
}

/// The icon's corner in the window.
Point TrayPlug::corner() const {
    // Pixels have no halves.
    const int x = (width_ - side()) / 2;
    const int y = (height_ - side()) / 2;
    return {static_cast<double>(x), static_cast<double>(y)};
}

std::optional<Rect> TrayPlug::frame() const {
    if (!isEmbedded_) {
        return std::nullopt;
    }
    auto* const xcb = connection_.xcb();
    const auto placed = xcb_translate_coordinates_unchecked(xcb, window_, connection_.root(), 0, 0);
    const auto sized = xcb_get_geometry_unchecked(xcb, window_);
    connection_.countRoundTrip();
    const Reply<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(xcb, placed, nullptr));
    const Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(xcb, sized, nullptr));
    if (!place || !size) {
        return std::nullopt;
    }
    return Rect{static_cast<double>(place->dst_x), static_cast<double>(place->dst_y),
                static_cast<double>(size->width), static_cast<double>(size->height)};
}

/// The square that the icon fills; empty when it is not on the screen.
std::vector<std::uint32_t> TrayPlug::pixelsOf(xcb_drawable_t drawable, const PixelLayout& layout,
                                              Point from) const {
    constexpr std::uint32_t allPlanes = ~0U;
    const auto length = static_cast<std::uint16_t>(side());
    connection_.countRoundTrip();
    const Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        connection_.xcb(),
        xcb_get_image_unchecked(connection_.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, drawable,
                                static_cast<std::int16_t>(from.x),
                                static_cast<std::int16_t>(from.y), length, length, allPlanes),
        nullptr));
    if (!reply) {
        return {};
    }
    return layout.decoded({xcb_get_image_data(reply.get()),
                           static_cast<std::size_t>(xcb_get_image_data_length(reply.get()))},
                          length);
}

bool TrayPlug::chooseColor(std::optional<IconColor> offered) {
    const auto ofScreen = findTrayVisual(connection_, connection_.screen().root_visual);
    if (ground_ != Ground::translucent || side() == 0 || !ofScreen) {
        return false;
    }
    const auto shown = frame();
    if (!shown) {
        return false;
    }
    const Point from{shown->x + corner().x, shown->y + corner().y};
    const auto screen = pixelsOf(connection_.root(), ofScreen->layout, from);
    behind_ = averageColor(screen, drawn_.pixels);
    const auto color = glyphColor(offered, behind_);
    const bool isAnother = color != color_;
    color_ = color;
    return isAnother;
}

void TrayPlug::draw(const IconPainter& painter, std::optional<IconColor> offered,
                    bool highlighted) {
    if (!isEmbedded_ || side() == 0) {
        return;
    }
    if (ground_ == Ground::translucent) {
        // Mixed here, since some trays multiply colors by their alpha that have been already: of a
        // translucent ground nothing would be left.
        drawn_ = composedIcon(painter, side(), color_,
                              highlighted ? std::optional(Highlight{behind_}) : std::nullopt);
        put(drawn_.pixels);
        return;
    }
    xcb_clear_area(connection_.xcb(), 0, window_, 0, 0, 0, 0);
    auto pixels = pixelsOf(window_, visual_.layout, corner());
    if (pixels.empty()) {
        return;  // not on the screen: it is exposed when it comes there
    }
    color_ = glyphColor(offered, averageColor(pixels));
    const auto icon = composedIcon(painter, side(), color_,
                                   highlighted ? std::optional(Highlight{}) : std::nullopt);
    blendOver(pixels, icon.pixels);
    put(pixels);
}

void TrayPlug::put(const std::vector<std::uint32_t>& pixels) {
    const auto bytes = visual_.layout.encoded(pixels, side());
    const auto length = static_cast<std::uint16_t>(side());
    constexpr std::uint8_t leftPad = 0;
    xcb_put_image(connection_.xcb(), XCB_IMAGE_FORMAT_Z_PIXMAP, window_, context_, length, length,
                  static_cast<std::int16_t>(corner().x), static_cast<std::int16_t>(corner().y),
                  leftPad, visual_.depth, static_cast<std::uint32_t>(bytes.size()), bytes.data());
    xcb_flush(connection_.xcb());
}

}  // namespace tessellon::x11
