// The windows of the programs on a private desktop, seen from outside: found by their process, read
// and placed by the tests' own code, so that what the program under test believes is checked
// against somebody else's measurement.
#pragma once

#include "harness/frame.h"
#include "harness/window_manager.h"
#include "harness/x_session.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include <xcb/xcb.h>

namespace tessellon::desktop {

class DesktopWindows {
  public:
    explicit DesktopWindows(XSession& session) : x_(session) {}

    /// Which window manager is in charge; set when one is started.
    void setWindowManager(const WindowManager& windowManager) { windowManager_ = &windowManager; }

    /// The windows that the window manager manages.
    std::vector<xcb_window_t> managed();

    /// Waits for the first shown window of a process that has one. Throws when none appears.
    xcb_window_t waitForWindowOf(pid_t process);

    /// Waits for a shown window of the process with this title. Nothing when none appears.
    std::optional<xcb_window_t> waitForTitled(pid_t process, std::string_view title);

    std::string title(xcb_window_t window);
    std::optional<xcb_window_t> active();
    bool isShown(xcb_window_t window);
    bool hasState(xcb_window_t window, std::string_view state);

    /// What the user sees of the window: decorations in, invisible shadows and borders out. Nothing
    /// while the window manager is still at work on it.
    std::optional<Frame> visibleFrame(xcb_window_t window);

    /// The smallest size that its program accepts, as a visible frame at 0, 0.
    Frame smallestSize(xcb_window_t window);

    /// Waits until the window's visible frame is `expected`; gives the frame it has in the end.
    Frame settle(xcb_window_t window, const Frame& expected);
    /// The same for a window that takes whole cells only: its size may stay short by one.
    Frame settleWithinIncrements(xcb_window_t window, const Frame& expected);

    /// Whether it has this frame, or is smaller by less than one of its increments.
    bool matchesWithinIncrements(xcb_window_t window, const Frame& expected);

    /// Gives the window this visible frame through the window manager, and waits for it. Gives the
    /// frame that it took.
    Frame place(xcb_window_t window, const Frame& frame);

    /// Each asks the window manager and waits for the result. They throw when it does not come.
    void activate(xcb_window_t window);
    void maximize(xcb_window_t window);
    void minimize(xcb_window_t window);

    /// The same for window managers that may have no such state: false when it does not come.
    bool maximizes(xcb_window_t window, std::chrono::milliseconds timeout);
    bool minimizes(xcb_window_t window, std::chrono::milliseconds timeout);

    /// Shows another desktop of the window manager's, and waits for it. Throws when it has none.
    void showDesktop(std::uint32_t number);

    /// What a process shows without the window manager's help: menus, panels, overlays.
    std::vector<Frame> unmanagedOf(pid_t process);

    /// Asks the program to close the window, as the close button does.
    void close(xcb_window_t window);

  private:
    std::optional<Frame> frameWindowGeometry(xcb_window_t window);
    std::optional<Frame> clientGeometry(xcb_window_t window);
    FrameWindow frameWindow() const;
    Edges edges(xcb_window_t window, std::string_view property);
    Edges decorations(xcb_window_t window);

    XSession& x_;
    const WindowManager* windowManager_ = nullptr;
};

}  // namespace tessellon::desktop
