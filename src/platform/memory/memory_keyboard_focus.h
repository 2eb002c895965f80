// The keyboard as a panel or a recording takes it, on the desktop in memory.
#pragma once

#include "platform/keyboard_focus.h"

#include <memory>
#include <optional>
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
