// Hot keys without a keyboard: combinations that other programs hold are refused, and a press is a
// call.
#pragma once

#include "base/handler_chain.h"
#include "platform/hot_key_center.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <utility>

namespace tessellon {

class MemoryHotKeyCenter final : public HotKeyCenter {
  public:
    Token installHandler(Handler handler) override;
    std::optional<Token> registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                        HotKeyId id) override;

    /// From now on another program has the combination, until it lets go.
    void holdByOthers(std::uint32_t keyCode, std::uint32_t modifiers);
    void releaseByOthers(std::uint32_t keyCode, std::uint32_t modifiers);

    /// Presses a combination. Nothing when it is not registered here; otherwise what became of the
    /// event.
    std::optional<HotKeyEventStatus> press(std::uint32_t keyCode, std::uint32_t modifiers);

    /// Delivers an event as it is, for ids that are not registered and events that name none.
    HotKeyEventStatus post(const std::optional<HotKeyId>& id);

    /// Keys have moved on the keyboard.
    void changeKeyboard() { changed_.emit(); }

    /// The id under which a combination is registered.
    std::optional<HotKeyId> registeredId(std::uint32_t keyCode, std::uint32_t modifiers) const;
    std::size_t registeredCount() const { return state_->registered.size(); }
    std::size_t handlerCount() const { return handlers_.size(); }

  private:
    /// Key code and modifiers.
    using Combination = std::pair<std::uint32_t, std::uint32_t>;
    /// Shared with the tokens, which may outlive this object.
    struct State {
        std::map<Combination, HotKeyId> registered;
        std::set<Combination> heldByOthers;
    };

    std::shared_ptr<State> state_ = std::make_shared<State>();
    HandlerChain<HotKeyEventStatus, std::optional<HotKeyId>> handlers_;
};

}  // namespace tessellon
