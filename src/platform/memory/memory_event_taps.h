// Event taps on the desktop in memory: a key is a call, and the desktop can refuse, switch off and
// invalidate taps.
#pragma once

#include "platform/event_tap.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace tessellon {

class MemoryEventTaps final : public EventTaps {
  public:
    std::unique_ptr<EventTap> create(std::uint32_t keyCode, std::uint64_t modifiers,
                                     Handlers handlers) override;

    /// While set, no tap can be made.
    void refuse(bool refused) { refused_ = refused; }
    /// While set, a tap that was switched off stays so.
    void keepDisabled(bool kept) { state_->keptDisabled = kept; }

    /// A key goes down. True when a tap swallowed it.
    bool press(const TappedKey& key);
    /// Switches all taps off, with or without telling them.
    enum class Notice { given, lost };
    void disableAll(Notice notice);
    void invalidateAll();

    std::size_t tapCount() const { return state_->taps.size(); }
    /// How many taps were made so far.
    int madeCount() const { return made_; }

  private:
    class Tap;
    /// Shared with the taps, which may outlive this object.
    struct State {
        std::vector<Tap*> taps;
        bool keptDisabled = false;
    };

    std::shared_ptr<State> state_ = std::make_shared<State>();
    bool refused_ = false;
    int made_ = 0;
};

}  // namespace tessellon
