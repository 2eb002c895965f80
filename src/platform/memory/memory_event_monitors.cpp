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
    return keyHandlers_.add(std::move(handler));
}

std::optional<Point> MemoryEventMonitors::pointerLocation() const {
    return desktop_.pointer();
}

void MemoryEventMonitors::emit(MonitoredEvent event, Scope scope) {
    (scope == Scope::global ? global_ : local_)[event].emit();
}

KeyVerdict MemoryEventMonitors::type(const KeyEvent& event) {
    return keyHandlers_.anyGives(KeyVerdict::used, event) ? KeyVerdict::used : KeyVerdict::notUsed;
}

}  // namespace tessellon
