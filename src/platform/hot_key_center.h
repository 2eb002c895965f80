// The port for global hot keys: combinations that reach this program whichever application is in
// front.
#pragma once

#include "base/signal.h"
#include "base/token.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace tessellon {

/// Modifier bits of a hot-key registration.
namespace hot_key_modifier {
inline constexpr std::uint32_t command = 0x100;
inline constexpr std::uint32_t shift = 0x200;
inline constexpr std::uint32_t option = 0x800;
inline constexpr std::uint32_t control = 0x1000;
}  // namespace hot_key_modifier

/// Comes back with the event: the signature says whose hot key it is, the id which one.
struct HotKeyId {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
    bool operator==(const HotKeyId&) const = default;
};

enum class HotKeyEventStatus { handled, notHandled };

class HotKeyCenter {
  public:
    virtual ~HotKeyCenter() = default;

    /// A hot key was pressed; nothing when the event does not say which one. Called on the main
    /// thread, once for each press, not for repeats while the key is held.
    using Handler = std::function<HotKeyEventStatus(const std::optional<HotKeyId>&)>;

    /// Handlers are asked in the order they were installed until one has handled the event.
    virtual Token installHandler(Handler handler) = 0;

    /// Makes the combination ours until the token is dropped. `keyCode` is a virtual key code: it
    /// names a physical key by its place, whatever the layout. Nothing when the combination is
    /// taken by somebody else or the keyboard has no such key.
    virtual std::optional<Token> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                HotKeyId id) = 0;

    /// Emitted when keys or modifiers have moved on the keyboard: what is registered may not be
    /// reached any more, what was refused may be free. Register everything anew.
    const Signal<>& changed() const { return changed_; }

  protected:
    HotKeyCenter() = default;
    Signal<> changed_;
};

}  // namespace tessellon
