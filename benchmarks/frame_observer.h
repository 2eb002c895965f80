// Measures from outside how long windows take to be where they should be: its own connection to the
// X server, woken by the events of the windows and of the frames around them. Only windows that an
// event tells of are read, since every question keeps the server from its work.
#pragma once

#include "harness/frame.h"
#include "statistics.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::benchmarks {

struct ExpectedFrame {
    xcb_window_t window = XCB_WINDOW_NONE;
    desktop::Frame frame;
    /// A window that takes whole cells only may be smaller by less than one of these.
    int cellWidth = 1;
    int cellHeight = 1;
};

/// What was seen after an action.
struct Settling {
    /// From the action to the last change of a frame.
    Milliseconds time{};
    /// Whether all windows are where they were expected.
    bool exact = false;
    /// Whether the probe said yes while a window was not in its frame yet.
    bool probedEarly = false;
};

class FrameObserver {
  public:
    /// Throws std::runtime_error when the server cannot be reached.
    explicit FrameObserver(const std::string& display);
    ~FrameObserver();
    FrameObserver(const FrameObserver&) = delete;
    FrameObserver& operator=(const FrameObserver&) = delete;

    /// To be called once for every window whose frame will be expected, after it was mapped.
    void watch(xcb_window_t window);

    /// Does something and watches until the windows are in these visible frames. When some do not
    /// get there, it stops after half a second without a change. The probe is asked before every
    /// look at the frames.
    Settling measure(
        const std::function<void()>& action, const std::vector<ExpectedFrame>& expected,
        const std::function<bool()>& probe = [] { return false; });

  private:
    using Frames = std::vector<std::optional<desktop::Frame>>;

    /// Reads the frames of those windows anew that are among `which`, or of all.
    void readFrames(const std::vector<ExpectedFrame>& windows, Frames& frames,
                    const std::set<xcb_window_t>* which = nullptr);
    /// Gives the windows that the events tell of; none when nothing came for a while.
    std::set<xcb_window_t> waitForEvents();
    xcb_atom_t atom(const std::string& name);

    xcb_connection_t* connection_;
    /// The client that a watched window is, or is around.
    std::map<xcb_window_t, xcb_window_t> clients_;
    xcb_window_t root_ = XCB_WINDOW_NONE;
    xcb_atom_t frameExtents_ = XCB_ATOM_NONE;
    xcb_atom_t shadowExtents_ = XCB_ATOM_NONE;
};

}  // namespace tessellon::benchmarks
