// A list of callbacks that an object calls when something happened. Single threaded.
#pragma once

#include "base/token.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace tessellon {

template <typename... Args>
class Signal {
  public:
    using Callback = std::function<void(Args...)>;

    /// Calls `callback` at every emit until the token is dropped. The token may outlive the signal.
    Token subscribe(Callback callback) const {
        const auto id = state_->nextId++;
        state_->callbacks.emplace(id, std::make_shared<Callback>(std::move(callback)));
        return Token([weak = std::weak_ptr<State>(state_), id] {
            if (const auto state = weak.lock()) {
                state->callbacks.erase(id);
            }
        });
    }

    /// Calls the callbacks in the order they subscribed. A callback may subscribe, unsubscribe
    /// itself or others, or destroy the signal: one that is unsubscribed is not called any more,
    /// one that is added is first called at the next emit.
    void emit(const std::type_identity_t<Args>&... args) const {
        const auto state = state_;
        std::vector<std::uint64_t> ids;
        ids.reserve(state->callbacks.size());
        for (const auto& [id, callback] : state->callbacks) {
            ids.push_back(id);
        }
        for (const auto id : ids) {
            const auto found = state->callbacks.find(id);
            if (found != state->callbacks.end()) {
                const auto callback = found->second;
                (*callback)(args...);
            }
        }
    }

  private:
    struct State {
        std::uint64_t nextId = 0;
        std::map<std::uint64_t, std::shared_ptr<Callback>> callbacks;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace tessellon
