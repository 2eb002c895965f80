// The tray icon of desktops whose panels show status notifier items: an object on the session bus
// that they read and press.
// https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem/
#pragma once

#include "platform/tray_icon.h"

#include <filesystem>
#include <memory>
#include <optional>

namespace tessellon {

class StatusNotifierItem final : public TrayIcon {
  public:
    /// `symbolicIcons` is where the icon is found by its name, as symbolicIconFolder gives it, for
    /// panels that draw it in their own color; the others get what `paint` draws.
    StatusNotifierItem(IconPainter paint, std::optional<std::filesystem::path> symbolicIcons);
    ~StatusNotifierItem() override;
    StatusNotifierItem(const StatusNotifierItem&) = delete;
    StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

    /// Begins to look for a panel; returns at once, whatever the bus does. Once is enough. A
    /// QCoreApplication must exist, and outlive this object; everything comes from its loop.
    void start();

    bool isAvailable() const override;
    void setShown(bool shown) override;
    /// Panels do not tell.
    std::optional<Rect> frame() const override { return std::nullopt; }
    /// Panels have no way of showing it.
    void setHighlighted(bool /*highlighted*/) override {}

  private:
    struct OnBus;

    IconPainter paint_;
    std::optional<std::filesystem::path> symbolicIcons_;
    bool isShown_ = false;
    std::unique_ptr<OnBus> onBus_;
};

}  // namespace tessellon
