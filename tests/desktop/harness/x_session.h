// The desktop tests' own connection to the X server: properties, messages to the root, and
// questions about windows, with everything that a test does not care about left out.
#pragma once

#include <array>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::desktop {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
template <typename T>
using Reply = std::unique_ptr<T, FreeReply>;

class XSession {
  public:
    /// Throws std::runtime_error when the server cannot be reached.
    explicit XSession(const std::string& display);
    ~XSession();
    XSession(const XSession&) = delete;
    XSession& operator=(const XSession&) = delete;

    xcb_connection_t* connection() const { return connection_; }
    xcb_window_t root() const { return screen_->root; }
    /// The size of the whole screen as it is now.
    std::uint16_t width() const;
    std::uint16_t height() const;

    xcb_atom_t atom(std::string_view name);

    /// The values of a 32-bit property; empty when there is none.
    std::vector<std::uint32_t> values(xcb_window_t window, std::string_view property);
    /// The bytes of an 8-bit property; empty when there is none.
    std::string bytes(xcb_window_t window, std::string_view property);
    void setValues(xcb_window_t window, std::string_view property, std::string_view type,
                   const std::vector<std::uint32_t>& values);

    /// Fills the background of the screen with a colour (0xRRGGBB), so that compositors know of it,
    /// too.
    void setBackground(std::uint32_t colour);

    bool exists(xcb_window_t window);
    xcb_window_t selectionOwner(std::string_view selection);

    /// Sends a client message about `window` to the root, as pagers do.
    void tellRoot(xcb_window_t window, std::string_view message,
                  const std::array<std::uint32_t, 5>& data);

    /// Whether a window manager that speaks EWMH is alive.
    bool windowManagerRuns();

    /// Asks for a small change of a window of our own and tells whether it has come true by now.
    /// Asked again and again, it also wakes a window manager that left requests unread when it
    /// started.
    bool windowManagerServes();

    /// The server's clock, as window managers want it in requests for the focus.
    xcb_timestamp_t serverTime();

    /// Whether some client holds a grab that keeps others from this combination. Asks without ever
    /// holding the combination in a way that another client could notice.
    bool combinationIsHeld(std::uint8_t keyCode, std::uint16_t modifiers);

    /// Process id of the client that made a window, as the server knows it.
    std::optional<std::int32_t> processOf(xcb_window_t window);

    /// Waits until the server has done everything asked so far, and drops unread events.
    void sync();

  private:
    xcb_connection_t* connection_ = nullptr;
    xcb_screen_t* screen_ = nullptr;
    xcb_window_t ownWindow_ = XCB_WINDOW_NONE;
    std::int32_t askedX_ = 0;
    std::map<std::string, xcb_atom_t, std::less<>> atoms_;
};

}  // namespace tessellon::desktop
