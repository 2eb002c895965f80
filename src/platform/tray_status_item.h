// The status item as a desktop with several kinds of tray has it: shown by one of them at a time.
#pragma once

#include "base/token.h"
#include "platform/status_item.h"
#include "platform/tray_icon.h"

#include <array>

namespace tessellon {

class TrayStatusItem final : public StatusItem {
  public:
    /// Of two trays that are there the preferred one gets the item; it changes over when that comes
    /// or goes. Both must outlive the item.
    TrayStatusItem(TrayIcon& preferred, TrayIcon& other);

    /// Puts the item into a tray, now or as soon as there is one.
    void show();

    /// Whether a tray shows the item now.
    bool isShown() const;

    std::optional<Rect> frame() const override;
    void setHighlighted(bool highlighted) override;

  private:
    void choose();
    TrayIcon& shownIn() const;

    TrayIcon& preferred_;
    TrayIcon& other_;
    bool isWanted_ = false;
    bool isHighlighted_ = false;
    std::array<Token, 3> tokens_;
};

}  // namespace tessellon
