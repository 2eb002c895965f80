#include "platform/memory/memory_event_monitors.h"

#include "platform/memory/memory_desktop.h"

#include <utility>

namespace tessellon {

std::optional<Token> MemoryEventMonitors::addGlobalMonitor(MonitoredEvent event,
                                                           Callback callback) {
    if (refused_.contains(event)) {
        return std::nullopt;
    }
    return global_[event].subscribe(std::move(callback));
}

std::optional<Token> MemoryEventMonitors::addLocalMonitor(MonitoredEvent event, Callback callback) {
    if (refused_.contains(event)) {
        return std::nullopt;
    }
    return local_[event].subscribe(std::move(callback));
}

std::optional<Token> MemoryEventMonitors::addLocalKeyMonitor(KeyHandler handler) {
    const auto id = nextKeyHandler_++;
    keyHandlers_->emplace(id, std::make_shared<KeyHandler>(std::move(handler)));
    return Token([weak = std::weak_ptr(keyHandlers_), id] {
        if (const auto handlers = weak.lock()) {
            handlers->erase(id);
        }
    });
}

std::optional<Point> MemoryEventMonitors::pointerLocation() const {
    return desktop_.pointer();
}

void MemoryEventMonitors::emit(MonitoredEvent event, Scope scope) {
    (scope == Scope::global ? global_ : local_)[event].emit();
}

KeyVerdict MemoryEventMonitors::type(const KeyEvent& event) {
    const auto handlers = *keyHandlers_;
    for (const auto& [id, handler] : handlers) {
        if ((*handler)(event) == KeyVerdict::used) {
            return KeyVerdict::used;
        }
    }
    return KeyVerdict::notUsed;
}

}  // namespace tessellon
