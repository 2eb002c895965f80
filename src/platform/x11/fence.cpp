#include "platform/x11/fence.h"

namespace tessellon::x11 {
namespace {

// Positions run through a range, so that a late answer to an earlier wait is told from the one that
// is waited for.
constexpr std::int16_t positions = 16384;

}  // namespace

Fence::Fence(Connection& connection)
    : connection_(connection), window_(xcb_generate_id(connection.xcb())) {
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_create_window(connection_.xcb(), XCB_COPY_FROM_PARENT, window_, connection_.root(), 0, 0, 1,
                      1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &mask);
    listener_ = connection_.addStateListener([this](const auto& event) {
        if (eventType(event) == XCB_CONFIGURE_NOTIFY) {
            const auto& notify = eventAs<xcb_configure_notify_event_t>(event);
            if (notify.window == window_) {
                seen_ = notify.x;
            }
        }
    });
}

Fence::~Fence() {
    xcb_destroy_window(connection_.xcb(), window_);
}

void Fence::send() {
    sent_ = static_cast<std::int16_t>((sent_ + 1) % positions);
    const auto x = static_cast<std::uint32_t>(sent_);
    xcb_configure_window(connection_.xcb(), window_, XCB_CONFIG_WINDOW_X, &x);
}

bool Fence::wait(Seconds timeout) {
    send();
    connection_.countRoundTrip();
    return connection_.pullUntil([this] { return isAnswered(); }, timeout);
}

}  // namespace tessellon::x11
