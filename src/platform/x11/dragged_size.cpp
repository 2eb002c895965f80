#include "platform/x11/dragged_size.h"

#include <algorithm>

namespace tessellon::x11 {

void DraggedSizes::remember(const Element& window, Size size) {
    forget(window);
    entries_.push_back({window, size});
}

void DraggedSizes::forget(const Element& window) {
    std::erase_if(entries_, [&](const Entry& entry) { return entry.window == window; });
}

std::optional<Size> DraggedSizes::outstanding(const Element& window) const {
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& entry) { return entry.window == window; });
    return found != entries_.end() ? std::optional(found->size) : std::nullopt;
}

Token DraggedSizes::hold(const Element& window) {
    held_->push_back(window);
    return Token([weak = std::weak_ptr(held_), window] {
        if (const auto held = weak.lock()) {
            if (const auto found = std::find(held->begin(), held->end(), window);
                found != held->end()) {
                held->erase(found);
            }
        }
    });
}

std::vector<std::pair<Element, Size>> DraggedSizes::takeDue() {
    std::vector<std::pair<Element, Size>> due;
    std::erase_if(entries_, [&](const Entry& entry) {
        if (std::find(held_->begin(), held_->end(), entry.window) != held_->end()) {
            return false;
        }
        due.emplace_back(entry.window, entry.size);
        return true;
    });
    return due;
}

}  // namespace tessellon::x11
