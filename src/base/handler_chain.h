// Handlers that are asked in turn until one of them has dealt with what happened. Single threaded.
#pragma once

#include "base/token.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

namespace tessellon {

template <typename Answer, typename Event>
class HandlerChain {
  public:
    using Handler = std::function<Answer(const Event&)>;

    /// Asks `handler` after those that are there already, until the token is dropped. The token may
    /// outlive the chain.
    Token add(Handler handler) {
        const auto id = state_->nextId++;
        state_->handlers.emplace(id, std::make_shared<Handler>(std::move(handler)));
        return Token([weak = std::weak_ptr<State>(state_), id] {
            if (const auto state = weak.lock()) {
                state->handlers.erase(id);
            }
        });
    }

    /// Whether one of the handlers gives `decisive`; those after it are not asked. A handler may
    /// add others, which are not asked this time, or take any off, which is not asked any more.
    bool anyGives(Answer decisive, const Event& event) const {
        const auto state = state_;
        std::vector<std::uint64_t> ids;
        ids.reserve(state->handlers.size());
        for (const auto& [id, handler] : state->handlers) {
            ids.push_back(id);
        }
        for (const auto id : ids) {
            if (const auto found = state->handlers.find(id); found != state->handlers.end()) {
                const auto handler = found->second;
                if ((*handler)(event) == decisive) {
                    return true;
                }
            }
        }
        return false;
    }

    std::size_t size() const { return state_->handlers.size(); }

  private:
    struct State {
        std::uint64_t nextId = 0;
        std::map<std::uint64_t, std::shared_ptr<Handler>> handlers;
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace tessellon
