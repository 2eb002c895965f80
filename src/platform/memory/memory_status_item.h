// A status item that is pressed by a call.
#pragma once

#include "platform/status_item.h"

#include <optional>

namespace tessellon {

class MemoryStatusItem final : public StatusItem {
  public:
    std::optional<Rect> frame() const override { return frame_; }
    void setHighlighted(bool highlighted) override { highlighted_ = highlighted; }

    void setFrame(const std::optional<Rect>& frame) { frame_ = frame; }
    bool isHighlighted() const { return highlighted_; }
    void press() { activated_.emit(); }

  private:
    std::optional<Rect> frame_ = Rect{1880, 1056, 24, 24};
    bool highlighted_ = false;
};

}  // namespace tessellon
