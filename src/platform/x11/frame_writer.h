// Brings windows into new frames by way of the window manager: collects what is asked for, sends it
// together, waits once, and makes sure of the result.
#pragma once

#include "base/geometry.h"
#include "platform/types.h"
#include "platform/x11/connection.h"
#include "platform/x11/fence.h"
#include "platform/x11/raw_input.h"
#include "platform/x11/window_mirror.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::x11 {

class FrameWriter {
  public:
    /// All of them must outlive this object.
    FrameWriter(Connection& connection, WindowMirror& mirror, const RawInput& input);

    void setTimeout(Seconds timeout) { timeout_ = timeout; }

    /// Asks for a position or a size of a window's visible frame. Sent with the next flush; several
    /// requests for one window become one.
    void requestPosition(xcb_window_t window, Point position);
    void requestSize(xcb_window_t window, Size size);

    /// Sends what was asked for and waits until the windows have it, or the window manager has not
    /// answered in time; the mirror is up to date afterwards. Does nothing when nothing was asked.
    void flush();

    /// True for a window whose last request was not answered in time; until the next look at it in
    /// another operation its frame is not to be believed.
    bool isUnanswered(xcb_window_t window) const { return unanswered_.contains(window); }
    void forgetUnanswered() { unanswered_.clear(); }

  private:
    struct Request {
        std::optional<Point> position;
        std::optional<Size> size;
    };
    using Requests = std::map<xcb_window_t, Request>;

    using Frames = std::map<xcb_window_t, Rect>;
    using Shadows = std::vector<std::pair<xcb_window_t, Extents>>;

    bool perform(Requests requests);
    bool anchorSizes(Requests& requests);
    bool leaveSpecialStates(const Requests& requests);
    bool sendUnsettled(const Requests& requests);
    Frames framesOf(const Requests& requests) const;
    Requests ignored(const Requests& requests, const Frames& before, const Frames& after) const;
    bool insist(const Requests& requests);
    void awaitOtherShadows(const Shadows& before);
    void send(const ClientWindow& window, const Request& request) const;
    bool keepsItsShadow(xcb_window_t window) const;
    bool isInPlace(const ClientWindow& window, const Request& request) const;
    bool isSettled(const ClientWindow& window, const Request& request) const;
    bool waitForWindowManager();

    Connection& connection_;
    WindowMirror& mirror_;
    const RawInput& input_;
    Fence fence_;
    Seconds timeout_{0.5};
    Seconds patience_{0.5};  // the timeout, or more for a crowd of windows
    Requests requests_;
    std::set<xcb_window_t> unanswered_;
    // Windows whose shadow was waited for in vain, with the number of its announcements then.
    std::map<xcb_window_t, std::uint64_t> unchangedShadows_;
    // Windows that stayed where they were although their tile was to let them go.
    Frames stuckAt_;
};

}  // namespace tessellon::x11
