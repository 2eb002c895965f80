// The port through which a panel of ours, or the recording of a shortcut, gets what is typed, while
// the window in front stays active.
#pragma once

#include "base/geometry.h"
#include "base/token.h"
#include "platform/key_event.h"

#include <cstdint>
#include <functional>

namespace tessellon {

enum class KeyTransition { pressed, released };

/// A key as the toolkit that draws the panel wants to have it.
struct TypedKey {
    KeyTransition transition = KeyTransition::pressed;
    KeyEvent event;
    /// The key's symbol with all modifiers, as X11 numbers symbols; 0 when it has none.
    std::uint32_t symbol = 0;
};

class KeyboardFocus {
  public:
    virtual ~KeyboardFocus() = default;

    struct Receiver {
        /// A key that no tap, hot key or local key monitor has used.
        std::function<void(const TypedKey&)> key;
        /// The keyboard is somebody else's again; called at most once, never from within take.
        std::function<void()> lost;
    };

    /// Sends all that is typed from now on to the receiver, until the token is dropped. The focus
    /// counts as lost when a button goes down outside of `panelFrame` (screen coordinates), when
    /// another window is activated or another workspace shown, and when somebody else keeps the
    /// keyboard.
    virtual Token take(const Rect& panelFrame, Receiver receiver) = 0;
};

}  // namespace tessellon
