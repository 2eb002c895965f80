#include "harness/key_log.h"

#include <array>

namespace tessellon::desktop {

KeyLog::KeyLog(const std::string& display) : x_(display) {
    auto* c = x_.connection();
    window_ = xcb_generate_id(c);
    const std::uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_create_window(c, XCB_COPY_FROM_PARENT, window_, x_.root(), 200, 200, 400, 300, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
    // ICCCM 4.1.2.4: only the input field of the hints, which says that the window takes the focus.
    x_.setValues(window_, "WM_HINTS", "WM_HINTS", {1, 1, 0, 0, 0, 0, 0, 0, 0});
    xcb_map_window(c, window_);
    xcb_flush(c);
}

KeyLog::~KeyLog() {
    xcb_destroy_window(x_.connection(), window_);
    xcb_flush(x_.connection());
}

const std::vector<KeyLog::Entry>& KeyLog::entries() {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(x_.connection())}) {
        const auto type = event->response_type & 0x7f;
        if (type == XCB_KEY_PRESS || type == XCB_KEY_RELEASE) {
            const auto* key = reinterpret_cast<const xcb_key_press_event_t*>(event.get());
            entries_.push_back({type == XCB_KEY_PRESS, key->detail, key->state});
        }
    }
    return entries_;
}

std::string KeyLog::story(std::uint8_t code) {
    std::string story;
    for (const Entry& entry : entries()) {
        if (entry.code == code) {
            story += entry.pressed ? '+' : '-';
        }
    }
    return story;
}

std::string KeyLog::transcript() {
    std::string transcript;
    for (const Entry& entry : entries()) {
        transcript += (transcript.empty() ? "" : " ") + std::string(entry.pressed ? "+" : "-") +
                      std::to_string(entry.code) + "/" + std::to_string(entry.state);
    }
    return transcript;
}

std::vector<std::uint8_t> KeyLog::presses() {
    std::vector<std::uint8_t> codes;
    for (const Entry& entry : entries()) {
        if (entry.pressed) {
            codes.push_back(entry.code);
        }
    }
    return codes;
}

void KeyLog::clear() {
    entries();
    entries_.clear();
}

bool KeyLog::isFocused() {
    const Reply<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(x_.connection(), xcb_get_input_focus(x_.connection()), nullptr));
    return reply && reply->focus == window_;
}

}  // namespace tessellon::desktop
