#include "platform/x11/dragged_frame.h"

namespace tessellon::x11 {
namespace {

// Window managers answer in less than a millisecond, also while they drag.
constexpr Seconds answerTimeout{0.05};

}  // namespace

DraggedFrame::DraggedFrame(Connection& connection, WindowMirror& mirror)
    : mirror_(mirror), fence_(connection) {}

std::optional<Point> DraggedFrame::origin(xcb_window_t id) {
    const auto* window = mirror_.find(id);
    if (window == nullptr) {
        return std::nullopt;
    }
    const Rect frame = window->visibleFrame();
    const bool isKnown = whole_ && whole_->window == id && whole_->frame == frame;
    if (isKnown || !windowManagerAnswers_) {
        return frame.origin();
    }
    // What it had begun when the frame was read is done after the fence. It may be at the next
    // step by then, so it is the earlier frame that is known to be whole.
    windowManagerAnswers_ = fence_.wait(answerTimeout);
    mirror_.refresh();
    window = mirror_.find(id);
    if (window == nullptr || window->visibleFrame().size() != frame.size()) {
        return std::nullopt;
    }
    whole_ = Seen{id, frame};
    return frame.origin();
}

void DraggedFrame::forget() {
    whole_.reset();
    windowManagerAnswers_ = true;
}

}  // namespace tessellon::x11
