#include "harness/pointer.h"

#include <algorithm>
#include <cstdlib>

#include <xcb/xtest.h>

namespace tessellon::desktop {
namespace {

constexpr int longestStep = 40;  // pixels
constexpr int fewestSteps = 4;

}  // namespace

void Pointer::fake(std::uint8_t type, std::uint8_t detail, Position at) {
    xcb_test_fake_input(x_.connection(), type, detail, XCB_CURRENT_TIME, x_.root(),
                        static_cast<std::int16_t>(at.x), static_cast<std::int16_t>(at.y), 0);
    x_.sync();
}

void Pointer::jumpTo(Position target) {
    constexpr std::uint8_t absolute = 0;
    fake(XCB_MOTION_NOTIFY, absolute, target);
}

void Pointer::moveTo(Position target) {
    const Position start = position();
    const int distance = std::max(std::abs(target.x - start.x), std::abs(target.y - start.y));
    const int steps = std::max(fewestSteps, distance / longestStep);
    for (int step = 1; step <= steps; ++step) {
        jumpTo({start.x + (target.x - start.x) * step / steps,
                start.y + (target.y - start.y) * step / steps});
    }
}

void Pointer::press(Button button) {
    fake(XCB_BUTTON_PRESS, static_cast<std::uint8_t>(button), {});
}

void Pointer::release(Button button) {
    fake(XCB_BUTTON_RELEASE, static_cast<std::uint8_t>(button), {});
}

void Pointer::click(Button button) {
    press(button);
    release(button);
}

Position Pointer::position() {
    const Reply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        x_.connection(), xcb_query_pointer(x_.connection(), x_.root()), nullptr));
    return reply ? Position{reply->root_x, reply->root_y} : Position{};
}

bool Pointer::isDown(Button button) {
    const Reply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        x_.connection(), xcb_query_pointer(x_.connection(), x_.root()), nullptr));
    const int bit = XCB_BUTTON_MASK_1 << (static_cast<int>(button) - 1);
    return reply && (reply->mask & bit) != 0;
}

bool Pointer::isFree() {
    constexpr std::uint16_t noEvents = 0;
    const Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
        x_.connection(),
        xcb_grab_pointer(x_.connection(), 0, x_.root(), noEvents, XCB_GRAB_MODE_ASYNC,
                         XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME),
        nullptr));
    if (!reply || reply->status != XCB_GRAB_STATUS_SUCCESS) {
        return false;
    }
    xcb_ungrab_pointer(x_.connection(), XCB_CURRENT_TIME);
    x_.sync();
    return true;
}

}  // namespace tessellon::desktop
