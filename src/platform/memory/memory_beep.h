// A beep that is counted instead of heard.
#pragma once

#include "platform/beep.h"

namespace tessellon {

class MemoryBeep final : public Beep {
  public:
    void beep() override { ++count_; }
    int count() const { return count_; }

  private:
    int count_ = 0;
};

}  // namespace tessellon
