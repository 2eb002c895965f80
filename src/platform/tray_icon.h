// One way of being in a tray. Desktops have two: hosts of StatusNotifierItem on the session bus,
// and XEmbed trays on the X server; TrayStatusItem uses the one that is there.
#pragma once

#include "base/geometry.h"
#include "base/signal.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace tessellon {

/// A square picture of size × size pixels: 0xAARRGGBB, premultiplied, rows from the top.
struct IconImage {
    int size = 0;
    std::vector<std::uint32_t> pixels;
};

/// 0xRRGGBB.
using IconColor = std::uint32_t;

/// Draws the icon, which is a template of one color on nothing, in a number of pixels.
using IconPainter = std::function<IconImage(int size, IconColor color)>;

class TrayIcon {
  public:
    virtual ~TrayIcon() = default;

    /// Whether there is a tray of this kind that would show the icon now. Asking waits for nobody.
    virtual bool isAvailable() const = 0;
    /// Emitted after isAvailable has changed.
    const Signal<>& availabilityChanged() const { return availabilityChanged_; }

    /// Puts the icon into the tray of this kind, now and whenever one comes, or takes it away.
    virtual void setShown(bool shown) = 0;

    /// Where the icon is, in screen coordinates; nothing while it is not shown, or when the tray
    /// does not tell.
    virtual std::optional<Rect> frame() const = 0;

    /// Shows that what the icon opens is open, as far as this kind of tray can.
    virtual void setHighlighted(bool highlighted) = 0;

    /// Emitted when the user has pressed the icon, with whatever button but a wheel.
    const Signal<>& activated() const { return activated_; }

  protected:
    TrayIcon() = default;
    Signal<> availabilityChanged_;
    Signal<> activated_;
};

}  // namespace tessellon
