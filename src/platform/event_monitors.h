// The port for what the user's hands are doing: watching the pointer and the modifier keys,
// whatever program they are meant for, and looking at them as they are now.
//
// Monitors only watch; what they see reaches its program all the same. Local key monitors alone may
// keep a key from our own panel. Callbacks run on the main thread, never nested in one another.
#pragma once

#include "base/geometry.h"
#include "base/token.h"
#include "platform/key_event.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace tessellon {

enum class MonitoredEvent : std::uint8_t {
    leftMouseDragged,  // the pointer moved with the left button down, or a window after it
    leftMouseUp,
    mouseDown,     // the left or the right button went down; pointerLocation() tells where
    flagsChanged,  // a modifier key went down or up
};

enum class KeyVerdict { used, notUsed };

class EventMonitors {
  public:
    virtual ~EventMonitors() = default;

    using Callback = std::function<void()>;
    using KeyHandler = std::function<KeyVerdict(const KeyEvent&)>;

    /// Calls back for every such event from now on that is meant for another program, until the
    /// token is dropped. A drag or release belongs to the program in whose window the button went
    /// down. Several motions that are waiting at once may be told as one. Nothing when the desktop
    /// refuses.
    virtual std::optional<Token> addGlobalMonitor(MonitoredEvent event, Callback callback) = 0;

    /// The same for the events that are meant for this program.
    virtual std::optional<Token> addLocalMonitor(MonitoredEvent event, Callback callback) = 0;

    /// Asks the handler for every key but the modifiers that goes down while a panel of ours or a
    /// recording has the keyboard, before the panel gets it. A used key goes no further.
    virtual std::optional<Token> addLocalKeyMonitor(KeyHandler handler) = 0;

    /// Where the pointer is now, in screen coordinates (bottom-left origin of the primary display,
    /// y up); nothing when there is no pointer to ask about.
    virtual std::optional<Point> pointerLocation() const = 0;

    /// The buttons that are down now: bit 0 is the left one.
    virtual std::uint32_t pressedMouseButtons() const = 0;

    /// The modifier keys that are down now, as bits of modifier_flag.
    virtual std::uint64_t modifierFlags() const = 0;
};

}  // namespace tessellon
