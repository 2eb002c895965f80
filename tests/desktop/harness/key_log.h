// A program in front that writes down every key it gets, on a connection of its own.
#pragma once

#include "harness/x_session.h"

#include <cstdint>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::desktop {

class KeyLog {
  public:
    /// Shows a window and gives no thought to the focus.
    explicit KeyLog(const std::string& display);
    ~KeyLog();
    KeyLog(const KeyLog&) = delete;
    KeyLog& operator=(const KeyLog&) = delete;

    xcb_window_t window() const { return window_; }

    struct Entry {
        bool pressed = false;
        std::uint8_t code = 0;
        std::uint16_t state = 0;
    };
    /// What came so far.
    const std::vector<Entry>& entries();

    /// How often a key went down and up; "+-+-" for two taps.
    std::string story(std::uint8_t code);
    /// Everything as text, to be compared: "+61/64 -61/64" for a key with the state 64.
    std::string transcript();
    /// The keys that went down, in order.
    std::vector<std::uint8_t> presses();
    void clear();

    /// Whether the window has been given the input focus.
    bool isFocused();

  private:
    XSession x_;
    xcb_window_t window_;
    std::vector<Entry> entries_;
};

}  // namespace tessellon::desktop
