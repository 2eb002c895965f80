#include "platform/tray_status_item.h"

namespace tessellon {

TrayStatusItem::TrayStatusItem(TrayIcon& preferred, TrayIcon& other)
    : preferred_(preferred),
      other_(other),
      tokens_{preferred.availabilityChanged().subscribe([this] { choose(); }),
              preferred.activated().subscribe([this] { activated_.emit(); }),
              other.activated().subscribe([this] { activated_.emit(); })} {}

void TrayStatusItem::show() {
    isWanted_ = true;
    choose();
}

bool TrayStatusItem::isShown() const {
    return isWanted_ && shownIn().isAvailable();
}

std::optional<Rect> TrayStatusItem::frame() const {
    return isWanted_ ? shownIn().frame() : std::nullopt;
}

void TrayStatusItem::setHighlighted(bool highlighted) {
    isHighlighted_ = highlighted;
    shownIn().setHighlighted(highlighted);
}

/// The other kind also waits for a tray of its own.
TrayIcon& TrayStatusItem::shownIn() const {
    return preferred_.isAvailable() ? preferred_ : other_;
}

void TrayStatusItem::choose() {
    if (!isWanted_) {
        return;
    }
    auto& chosen = shownIn();
    auto& unused = &chosen == &preferred_ ? other_ : preferred_;
    unused.setHighlighted(false);
    unused.setShown(false);
    chosen.setHighlighted(isHighlighted_);
    chosen.setShown(true);
}

}  // namespace tessellon
