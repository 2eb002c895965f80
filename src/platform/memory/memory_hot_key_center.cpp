#include "platform/memory/memory_hot_key_center.h"

#include <utility>

namespace tessellon {

Token MemoryHotKeyCenter::installHandler(Handler handler) {
    return handlers_.add(std::move(handler));
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
    return handlers_.anyGives(HotKeyEventStatus::handled, id) ? HotKeyEventStatus::handled
                                                              : HotKeyEventStatus::notHandled;
}

std::optional<HotKeyId> MemoryHotKeyCenter::registeredId(std::uint32_t keyCode,
                                                         std::uint32_t modifiers) const {
    const auto found = state_->registered.find({keyCode, modifiers});
    return found != state_->registered.end() ? std::optional(found->second) : std::nullopt;
}

}  // namespace tessellon
