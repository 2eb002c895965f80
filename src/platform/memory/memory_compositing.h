// A compositor that is there or not as it is told.
#pragma once

#include "platform/compositing.h"

#include <vector>

namespace tessellon {

class MemoryCompositing final : public Compositing {
  public:
    bool isActive() const override { return active_; }
    void preparePanel(NativeWindow window) override { prepared_.push_back(window); }

    const Signal<>& changed() const override { return changed_; }

    void setActive(bool active) {
        active_ = active;
        changed_.emit();
    }
    /// The panels that were prepared, in order.
    const std::vector<NativeWindow>& prepared() const { return prepared_; }

  private:
    bool active_ = true;
    Signal<> changed_;
    std::vector<NativeWindow> prepared_;
};

}  // namespace tessellon
