// The port for watching one key everywhere and keeping it from the program it was meant for.
#pragma once

#include "base/modifier_flag.h"

#include <cstdint>
#include <functional>
#include <memory>

namespace tessellon {

/// A key went down somewhere.
struct TappedKey {
    /// Virtual key code.
    std::uint32_t keyCode = 0;
    /// Bits of modifier_flag, rightCommand among them.
    std::uint64_t flags = 0;
    /// Held and repeating.
    bool isAutorepeat = false;
};

enum class TapVerdict {
    pass,    // the program in front gets the key as if nobody had looked
    swallow  // nobody gets it
};

/// One installed tap; destroying it removes it.
class EventTap {
  public:
    virtual ~EventTap() = default;

    /// False once the tap can never see a key again; it has to be made anew then.
    virtual bool isValid() const = 0;
    /// A tap can be switched off by the desktop while it stays valid.
    virtual bool isEnabled() const = 0;
    /// Tries to switch it on again; ask isEnabled whether that worked.
    virtual void enable() = 0;
};

class EventTaps {
  public:
    virtual ~EventTaps() = default;

    struct Handlers {
        /// Decides about a key. Whoever types waits meanwhile, so it must not block. What is typed
        /// after a swallowed key goes to whatever has taken the keyboard by the time it returns.
        std::function<TapVerdict(const TappedKey&)> keyDown;
        /// The desktop has switched the tap off.
        std::function<void()> disabled;
    };

    /// Watches one key, given by its virtual key code, while at least the modifiers in
    /// `modifiers` (bits of modifier_flag::all) are down; the handler may also be asked about
    /// others. Null when the desktop refuses, for instance because another program holds the key.
    virtual std::unique_ptr<EventTap> create(std::uint32_t keyCode, std::uint64_t modifiers,
                                             Handlers handlers) = 0;
};

}  // namespace tessellon
