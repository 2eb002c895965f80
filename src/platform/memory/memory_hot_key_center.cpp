#include "platform/memory/memory_hot_key_center.h"

#include <utility>
#include <vector>

namespace tessellon {

Token MemoryHotKeyCenter::installHandler(Handler handler) {
    const auto id = state_->nextHandler++;
    state_->handlers.emplace(id, std::make_shared<Handler>(std::move(handler)));
    return Token([weak = std::weak_ptr<State>(state_), id] {
        if (const auto state = weak.lock()) {
            state->handlers.erase(id);
        }
    });
}

std::optional<Token> MemoryHotKeyCenter::registerHotKey(std::uint32_t keyCode,
                                                        std::uint32_t modifiers, HotKeyId id) {
    const Combination combination{keyCode, modifiers};
    if (state_->heldByOthers.contains(combination) ||
        !state_->registered.emplace(combination, id).second) {
        return std::nullopt;
    }
    return Token([weak = std::weak_ptr<State>(state_), combination] {
        if (const auto state = weak.lock()) {
            state->registered.erase(combination);
        }
    });
}

void MemoryHotKeyCenter::holdByOthers(std::uint32_t keyCode, std::uint32_t modifiers) {
    state_->heldByOthers.insert({keyCode, modifiers});
}

void MemoryHotKeyCenter::releaseByOthers(std::uint32_t keyCode, std::uint32_t modifiers) {
    state_->heldByOthers.erase({keyCode, modifiers});
}

std::optional<HotKeyEventStatus> MemoryHotKeyCenter::press(std::uint32_t keyCode,
                                                           std::uint32_t modifiers) {
    const auto id = registeredId(keyCode, modifiers);
    return id ? std::optional(post(id)) : std::nullopt;
}

HotKeyEventStatus MemoryHotKeyCenter::post(const std::optional<HotKeyId>& id) {
    const auto state = state_;
    std::vector<std::uint64_t> order;
    for (const auto& [handlerId, handler] : state->handlers) {
        order.push_back(handlerId);
    }
    for (const auto handlerId : order) {
        const auto found = state->handlers.find(handlerId);
        if (found == state->handlers.end()) {
            continue;
        }
        const auto handler = found->second;  // it may remove itself
        if ((*handler)(id) == HotKeyEventStatus::handled) {
            return HotKeyEventStatus::handled;
        }
    }
    return HotKeyEventStatus::notHandled;
}

std::optional<HotKeyId> MemoryHotKeyCenter::registeredId(std::uint32_t keyCode,
                                                         std::uint32_t modifiers) const {
    const auto found = state_->registered.find({keyCode, modifiers});
    return found != state_->registered.end() ? std::optional(found->second) : std::nullopt;
}

}  // namespace tessellon
