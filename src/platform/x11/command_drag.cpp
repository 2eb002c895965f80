#include "platform/x11/command_drag.h"

#include "base/modifier_flag.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tessellon::x11 {
namespace {

// Directions of _NET_WM_MOVERESIZE (EWMH).
constexpr std::uint32_t beginMove = 8;
constexpr std::uint32_t cancelMove = 11;
constexpr std::uint32_t leftButton = 1;
constexpr std::uint32_t sourcePager = 2;

// Pixels that the pointer goes before the press counts as a drag. Further than the window managers
// themselves wait (Openbox: 8), so that a binding of the user's for this press comes first.
constexpr double threshold = 10;

// What a window manager takes for the resize handle at the edge of a title bar, in pixels.
constexpr double resizeHandle = 5;

// To a window manager that forgets some.
constexpr int mostRequests = 5;

bool isOnTitleBar(const ClientWindow& window, Point point) {
    const Rect frame = window.visibleFrame();
    return point.y >= frame.y + resizeHandle && point.y < window.client.y &&
           point.x >= frame.x + resizeHandle && point.x < frame.x + frame.width - resizeHandle;
}

Point pointOf(const RawInput::Pointer& pointer) {
    return {static_cast<double>(pointer.x), static_cast<double>(pointer.y)};
}

}  // namespace

CommandDrag::CommandDrag(Connection& connection, WindowMirror& mirror, RawInput& input,
                         std::function<bool()> wanted)
    : connection_(connection),
      mirror_(mirror),
      input_(input),
      wanted_(std::move(wanted)),
      fence_(connection) {
    pressed_ =
        input_.buttonPressed().subscribe([this](std::uint32_t button) { onPressed(button); });
    motion_ = input_.motion().subscribe([this] { onMotion(); });
    idle_ = connection_.idle().subscribe([this] { onIdle(); });
    released_ = input_.buttonReleased().subscribe([this] { onReleased(); });
}

bool CommandDrag::onlyCommandIsDown() const {
    return (input_.modifierFlags() & modifier_flag::all) == modifier_flag::command;
}

const ClientWindow* CommandDrag::pressedWindow() const {
    return press_ ? mirror_.find(press_->window, press_->generation) : nullptr;
}

void CommandDrag::tellWindowManager(std::uint32_t what) const {
    const auto coordinate = [](double value) {
        return static_cast<std::uint32_t>(static_cast<std::int32_t>(value));
    };
    connection_.sendToWindowManager(
        press_->window, Atom::netWmMoveresize,
        {coordinate(press_->at.x), coordinate(press_->at.y), what, leftButton, sourcePager});
}

void CommandDrag::onPressed(std::uint32_t button) {
    press_.reset();
    if (button != leftButton || !onlyCommandIsDown() || !mirror_.habits().ignoresCommandPress ||
        !wanted_()) {
        return;
    }
    const auto& pointer = input_.pointerAtPress();
    if (!pointer || pointer->topLevel == XCB_WINDOW_NONE) {
        return;
    }
    const Point at = pointOf(*pointer);
    mirror_.look();
    const auto* window = mirror_.findByTopLevel(pointer->topLevel);
    if (window == nullptr || !window->managed || !isOnTitleBar(*window, at)) {
        return;
    }
    press_ = Press{window->id, window->generation, at, window->visibleFrame()};
}

void CommandDrag::onMotion() {
    if (!press_ || (press_->stage != Stage::still && !asksOnceMore())) {
        return;
    }
    if (!onlyCommandIsDown()) {
        giveUp();
        return;
    }
    const auto pointer = input_.queryPointer();
    if (pointer && std::max(std::abs(pointer->x - press_->at.x),
                            std::abs(pointer->y - press_->at.y)) >= threshold) {
        // The window manager has seen the same motion; what it makes of it is there after the
        // fence. A busy one may take as long as the button is down.
        fence_.send();
        press_->stage = Stage::waiting;
    }
}

void CommandDrag::onIdle() {
    if (!press_ || press_->stage != Stage::waiting || !fence_.isAnswered()) {
        return;
    }
    mirror_.refresh();
    const auto* window = pressedWindow();
    if (!onlyCommandIsDown() || window == nullptr || window->visibleFrame() != press_->frame) {
        giveUp();
        return;
    }
    press_->stage = Stage::begun;
    ++press_->requests;
    // A press that begins a move brings its window to the front, too.
    connection_.sendToWindowManager(press_->window, Atom::netActiveWindow,
                                    {sourcePager, XCB_CURRENT_TIME, 0, 0, 0});
    tellWindowManager(beginMove);
}

bool CommandDrag::asksOnceMore() const {
    return press_->stage == Stage::begun && press_->requests < mostRequests &&
           mirror_.habits().forgetsMoveRequests;
}

/// Asks for nothing any more. What was asked for has its end with the release.
void CommandDrag::giveUp() {
    if (press_->requests == 0) {
        press_.reset();
        return;
    }
    press_->stage = Stage::begun;
    press_->requests = mostRequests;
}

void CommandDrag::onReleased() {
    if (press_ && press_->requests > 0 && pressedWindow() != nullptr) {
        // Where the button went up before the window manager took the move over, it would keep the
        // pointer for a move that nothing ends. Any other is over by the time it reads this.
        tellWindowManager(cancelMove);
    }
    press_.reset();
}

}  // namespace tessellon::x11
