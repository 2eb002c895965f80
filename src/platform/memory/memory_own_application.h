// The program on a desktop in memory: it has the key window that it is told to have.
#pragma once

#include "platform/own_application.h"

#include <optional>

namespace tessellon {

class MemoryOwnApplication final : public OwnApplication {
  public:
    std::optional<Rect> keyWindowFrame() const override { return keyWindowFrame_; }
    void terminate() override { ++terminations_; }

    void setKeyWindowFrame(const std::optional<Rect>& frame) { keyWindowFrame_ = frame; }
    int terminations() const { return terminations_; }

  private:
    std::optional<Rect> keyWindowFrame_;
    int terminations_ = 0;
};

}  // namespace tessellon
