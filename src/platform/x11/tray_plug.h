// The window that a tray of the X server takes in (XEmbed), and what is drawn in it.
#pragma once

#include "platform/tray_icon.h"
#include "platform/x11/connection.h"
#include "platform/x11/tray_pixels.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::x11 {

/// A visual that the icon can be drawn in.
struct TrayVisual {
    xcb_visualid_t id = XCB_NONE;
    std::uint8_t depth = 0;
    PixelLayout layout;
};

/// The visual with this id; nothing when the screen has none, or one that has no pixels of plain
/// red, green and blue.
std::optional<TrayVisual> findTrayVisual(const Connection& connection, xcb_visualid_t id);

class TrayPlug {
  public:
    /// What shows where the glyph does not cover it.
    enum class Ground {
        translucent,  // whatever the tray puts together with our pixels
        ofParent      // the background of the window that we are in
    };

    /// Makes the window, which stays unmapped until somebody takes it in.
    TrayPlug(const Connection& connection, const TrayVisual& visual, Ground ground,
             const std::string& name);
    /// Takes it away from whoever has it, which is harmless when it has died with the tray.
    ~TrayPlug();
    TrayPlug(const TrayPlug&) = delete;
    TrayPlug& operator=(const TrayPlug&) = delete;

    xcb_window_t window() const { return window_; }
    xcb_visualid_t visual() const { return visual_.id; }
    Ground ground() const { return ground_; }
    bool isEmbedded() const { return isEmbedded_; }

    /// To be called when a tray has taken the window in. False when this window cannot show the
    /// background of that one, since their depths differ.
    bool embedIn(std::uint8_t parentDepth);

    void setSize(int width, int height);

    /// Where it is in root coordinates; nothing when it is in no tray. One round trip.
    std::optional<Rect> frame() const;

    /// Looks what is behind a translucent icon and chooses its color by that; true when it is
    /// another one than before. Two round trips.
    bool chooseColor(std::optional<IconColor> offered);

    /// Draws the icon; on the background of the parent, which takes a round trip, its color is
    /// chosen while at it.
    void draw(const IconPainter& painter, std::optional<IconColor> offered, bool highlighted);

  private:
    void setProperties(const std::string& name);
    std::vector<std::uint32_t> pixelsOf(xcb_drawable_t drawable, const PixelLayout& layout,
                                        Point from) const;
    void put(const std::vector<std::uint32_t>& pixels);
    int side() const;
    Point corner() const;

    const Connection& connection_;
    TrayVisual visual_;
    Ground ground_;
    xcb_window_t window_;
    xcb_gcontext_t context_;
    xcb_colormap_t colormap_ = XCB_NONE;
    bool isEmbedded_ = false;
    int width_;
    int height_;
    IconColor color_;
    // Of a translucent window: what is on it and what was seen behind it.
    IconImage drawn_;
    std::optional<IconColor> behind_;
};

}  // namespace tessellon::x11
