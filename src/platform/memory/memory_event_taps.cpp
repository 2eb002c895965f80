#include "platform/memory/memory_event_taps.h"

#include <utility>

namespace tessellon {

class MemoryEventTaps::Tap final : public EventTap {
  public:
    Tap(std::shared_ptr<State> state, std::uint32_t keyCode, Handlers handlers)
        : state_(std::move(state)), keyCode_(keyCode), handlers_(std::move(handlers)) {
        state_->taps.push_back(this);
    }
    ~Tap() override { std::erase(state_->taps, this); }
    Tap(const Tap&) = delete;
    Tap& operator=(const Tap&) = delete;

    bool isValid() const override { return valid_; }
    bool isEnabled() const override { return valid_ && enabled_; }
    void enable() override { enabled_ = !state_->keptDisabled; }

    bool swallows(const TappedKey& key) const {
        return isEnabled() && key.keyCode == keyCode_ &&
               handlers_.keyDown(key) == TapVerdict::swallow;
    }
    void disable(Notice notice) {
        enabled_ = false;
        if (notice == Notice::given) {
            handlers_.disabled();
        }
    }
    void invalidate() { valid_ = false; }

  private:
    std::shared_ptr<State> state_;
    std::uint32_t keyCode_;
    Handlers handlers_;
    bool valid_ = true;
    bool enabled_ = true;
};

std::unique_ptr<EventTap> MemoryEventTaps::create(std::uint32_t keyCode,
                                                  std::uint64_t /*modifiers*/, Handlers handlers) {
    if (refused_) {
        return nullptr;
    }
    ++made_;
    return std::make_unique<Tap>(state_, keyCode, std::move(handlers));
}

bool MemoryEventTaps::press(const TappedKey& key) {
    const auto taps = state_->taps;
    for (const auto* tap : taps) {
        if (tap->swallows(key)) {
            return true;
        }
    }
    return false;
}

void MemoryEventTaps::disableAll(Notice notice) {
    for (auto* tap : state_->taps) {
        tap->disable(notice);
    }
}

void MemoryEventTaps::invalidateAll() {
    for (auto* tap : state_->taps) {
        tap->invalidate();
    }
}

}  // namespace tessellon
