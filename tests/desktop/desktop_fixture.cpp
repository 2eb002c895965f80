#include "desktop_fixture.h"

namespace tessellon::desktop {

void DesktopTest::useDesktop(const std::string& windowManagerName, const Monitors& monitors,
                             WindowManagerKeys keys) {
    if (!programExists(windowManager(windowManagerName).command.front())) {
        GTEST_SKIP() << windowManagerName << " is not installed";
    }
    useBareDesktop(monitors);
    desktop_->startWindowManager(windowManagerName, keys);
    if (monitors.all.empty()) {
        desktop_->addDock(dockHeight);
    }
    // One on each: some window managers cut a bar that reaches across several.
    for (const Monitor& each : monitors.all) {
        desktop_->addDock({{each.frame.x, each.frame.y, each.frame.width, dockHeight}});
    }
}

void DesktopTest::useBareDesktop(const Monitors& monitors,
                                 const std::vector<std::string>& serverArguments) {
    desktop_ = std::make_unique<PrivateDesktop>(monitors, serverArguments);
    program_ = std::make_unique<Program>(*desktop_);
}

void DesktopTest::TearDown() {
    if (!program_) {
        return;
    }
    if (program_->running()) {
        EXPECT_EQ(program_->stop(), (ProcessEnd{.exitCode = 0, .signal = std::nullopt}));
    } else {
        EXPECT_TRUE(programMayBeGone_) << "the program is gone";
    }
    if (!programMaySpeak_) {
        EXPECT_EQ(program_->standardError(), "");
    }
}

xcb_window_t DesktopTest::startClock(const Frame& frame, const std::string& title) {
    // Clocks do not take the keyboard unless they are told to.
    const xcb_window_t window =
        desktop_->startWithWindow({"xclock", "-title", title, "-xrm", "XClock.input: True"});
    EXPECT_EQ(desktop_->windows().place(window, frame), frame);
    return window;
}

Frame DesktopTest::snap(xcb_window_t window, Held held, Key key, const Frame& expected) {
    desktop_->windows().activate(window);
    desktop_->keyboard().combination(held, key);
    return desktop_->windows().settle(window, expected);
}

Frame DesktopTest::afterPress(xcb_window_t window, Held held, Key key) {
    desktop_->windows().activate(window);
    desktop_->keyboard().combination(held, key);
    program_->waitUntilIdle();
    return desktop_->windows().visibleFrame(window).value_or(Frame{});
}

}  // namespace tessellon::desktop
