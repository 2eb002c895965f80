#include "platform/x11/frames_at_press.h"

namespace tessellon::x11 {

FramesAtPress::FramesAtPress(WindowMirror& mirror, const RawInput& input) : mirror_(mirror) {
    pulled_ = input.leftPressPulled().subscribe([this] {
        clear();
        add();
    });
    told_ = input.buttonPressed().subscribe([this](std::uint32_t button) {
        if (button == XCB_BUTTON_INDEX_1) {
            mirror_.refresh();
            add();
        }
    });
}

/// What is known already is older, and stays.
void FramesAtPress::add() {
    for (const auto* window : mirror_.managed()) {
        if (mirror_.knowsFrame(*window)) {
            frames_.emplace(window->id, Known{window->generation, window->visibleFrame()});
        }
    }
}

std::optional<Rect> FramesAtPress::of(const ClientWindow& window) const {
    const auto found = frames_.find(window.id);
    return found != frames_.end() && found->second.generation == window.generation
               ? std::optional(found->second.frame)
               : std::nullopt;
}

}  // namespace tessellon::x11
