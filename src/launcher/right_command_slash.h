// The chord that opens and closes the launcher: the right one of the two command keys, and the key
// that is / on an ANSI keyboard, with no other modifier.
#pragma once

#include "platform/event_tap.h"

#include <functional>
#include <memory>

namespace tessellon {

class RightCommandSlash {
  public:
    /// `onTrigger` is called once for each press of the chord, while whoever types waits.
    RightCommandSlash(EventTaps& taps, std::function<void()> onTrigger);
    RightCommandSlash(const RightCommandSlash&) = delete;
    RightCommandSlash& operator=(const RightCommandSlash&) = delete;

    /// Installs the tap unless there is one. When the desktop refuses, nothing happens; try again
    /// later.
    void start();
    void stop();

    /// Makes a tap that is missing, invalid or switched off work again, as far as the desktop
    /// allows.
    void checkHealth();

  private:
    TapVerdict onKeyDown(const TappedKey& key);

    EventTaps& taps_;
    std::function<void()> onTrigger_;
    std::unique_ptr<EventTap> tap_;
};

}  // namespace tessellon
