// The keyboard as a panel or a recording takes it, on the desktop in memory.
#pragma once

#include "platform/keyboard_focus.h"
#include "platform/memory/memory_event_monitors.h"

#include <memory>
#include <utility>

namespace tessellon {

class MemoryKeyboardFocus final : public KeyboardFocus {
  public:
    Token take(const Rect& panelFrame, Receiver receiver) override {
        frame_ = panelFrame;
        const auto holder = std::make_shared<Receiver>(std::move(receiver));
        *holder_ = holder;
        return Token([weak = std::weak_ptr(holder_), holder] {
            const auto current = weak.lock();
            if (current && *current == holder) {
                current->reset();
            }
        });
    }

    bool isTaken() const { return *holder_ != nullptr; }
    /// The frame that the last holder gave.
    const Rect& frame() const { return frame_; }

    /// Presses and releases a key: what no local key monitor uses goes to whoever held the keyboard
    /// when it went down, its release to whoever holds it by then.
    void press(MemoryEventMonitors& monitors, const TypedKey& key) {
        const auto holder = *holder_;
        if (monitors.type(key.event) == KeyVerdict::notUsed && holder) {
            holder->key(key);
        }
        if (const auto current = *holder_) {
            auto released = key;
            released.transition = KeyTransition::released;
            current->key(released);
        }
    }

    /// A button goes down elsewhere, or another window is activated.
    void lose() {
        if (const auto holder = std::exchange(*holder_, nullptr); holder && holder->lost) {
            holder->lost();
        }
    }

  private:
    /// Shared with the tokens, which may outlive this object.
    std::shared_ptr<std::shared_ptr<Receiver>> holder_ =
        std::make_shared<std::shared_ptr<Receiver>>();
    Rect frame_;
};

}  // namespace tessellon
