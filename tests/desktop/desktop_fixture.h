// What the desktop tests share: a private desktop under the window manager a test is run for, the
// program on it, and the promise that it is alive and silent at the end.
#pragma once

#include "harness/private_desktop.h"
#include "harness/program.h"
#include "harness/wait.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon::desktop {

/// Height of the bar at the top of the test desktops, in pixels.
inline constexpr std::uint16_t dockHeight = 25;

/// What remains of 1920 × 1080 below that bar with an edge gap of 8 on every side.
inline constexpr Frame usableArea{8, 33, 1904, 1039};

/// Places in that area; by themselves, since the tiles of a panel have the same names.
namespace place {
inline constexpr Frame leftHalf{8, 33, 948, 1039};
inline constexpr Frame rightHalf{964, 33, 948, 1039};
inline constexpr Frame topLeft{8, 33, 948, 516};
inline constexpr Frame topRight{964, 33, 948, 516};
inline constexpr Frame bottomLeft{8, 556, 948, 516};
inline constexpr Frame bottomRight{964, 556, 948, 516};
inline constexpr Frame leftThird{8, 33, 631, 1039};
inline constexpr Frame rightThird{1281, 33, 631, 1039};
inline constexpr Frame leftTwoThirds{8, 33, 1266, 1039};
}  // namespace place
using namespace place;

inline constexpr int launcherWidth = 472;

/// A test on one private desktop; the base of all.
class DesktopTest : public ::testing::Test {
  protected:
    /// The window manager that the test is run under.
    virtual std::string testedUnder() const { return "openbox"; }

    /// Skips the test where that is not installed.
    void SetUp() override;

    /// Starts a desktop with that window manager.
    void useDesktop(const Monitors& monitors = Monitors::one,
                    WindowManagerKeys keys = WindowManagerKeys::released);
    /// The same, and the program on it, with some settings changed before.
    void useProgram(const StoredValues& settings = {});

    /// Starts a desktop that has no window manager yet.
    void useBareDesktop(const Monitors& monitors = Monitors::one,
                        const std::vector<std::string>& serverArguments = {});

    /// Checks that the program still runs, ends it, and checks that it ended well and said nothing.
    void TearDown() override;

    PrivateDesktop& desktop() { return *desktop_; }
    Program& program() { return *program_; }

    /// What the program shows above all windows at the moment: overlays and panels.
    std::vector<Frame> pictures();
    /// The first of them that is as wide as that.
    std::optional<Frame> pictureOfWidth(int width);

    /// What the user sees of a window; nothing while the window manager is at work on it.
    Frame frameOf(xcb_window_t window);

    /// A window without resize increments, at a frame of its own.
    xcb_window_t startClock(const Frame& frame, const std::string& title = "clock");

    /// Activates the window, presses the combination and waits for the frame.
    Frame snap(xcb_window_t window, Held held, Key key, const Frame& expected);

    /// Activates the window, presses the combination, and gives the frame once all is quiet.
    Frame afterPress(xcb_window_t window, Held held, Key key);

    /// For tests that end the program themselves or never start it.
    void programMayBeGone() { programMayBeGone_ = true; }
    /// For tests that make it speak.
    void programMaySpeak() { programMaySpeak_ = true; }

  private:
    std::unique_ptr<PrivateDesktop> desktop_;
    std::unique_ptr<Program> program_;
    bool programMayBeGone_ = false;
    bool programMaySpeak_ = false;
};

/// A test that is run for several window managers, by name.
class WindowManagerTest : public DesktopTest, public ::testing::WithParamInterface<std::string> {
  protected:
    std::string testedUnder() const override { return GetParam(); }
};

/// The window managers that every release is tested under.
inline auto testedWindowManagers() {
    return ::testing::Values("openbox", "xfwm4", "metacity", "icewm", "kwin");
}

inline std::string windowManagerName(const ::testing::TestParamInfo<std::string>& info) {
    return info.param;
}

}  // namespace tessellon::desktop
