#include "desktop_fixture.h"

#include <algorithm>

namespace tessellon::desktop {

void DesktopTest::SetUp() {
    if (!programExists(windowManager(testedUnder()).command.front())) {
        GTEST_SKIP() << testedUnder() << " is not installed";
    }
}

void DesktopTest::useDesktop(const Monitors& monitors, WindowManagerKeys keys) {
    useBareDesktop(monitors);
    desktop_->startWindowManager(testedUnder(), keys);
    if (monitors.all.empty()) {
        desktop_->addDock(dockHeight);
    }
    // One on each: some window managers cut a bar that reaches across several.
    for (const Monitor& each : monitors.all) {
        desktop_->addDock({{each.frame.x, each.frame.y, each.frame.width, dockHeight}});
    }
}

void DesktopTest::useProgram(const StoredValues& settings) {
    useDesktop();
    if (!settings.empty()) {
        program_->change(settings);
    }
    program_->start();
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

std::vector<Frame> DesktopTest::pictures() {
    auto shown = desktop_->windows().unmanagedOf(program_->process().pid());
    // While the command key is down there may be an invisible window below the pointer.
    std::erase_if(shown, [](const Frame& frame) { return frame.width == 1; });
    return shown;
}

std::optional<Frame> DesktopTest::pictureOfWidth(int width) {
    const auto shown = pictures();
    const auto found = std::find_if(shown.begin(), shown.end(),
                                    [&](const Frame& frame) { return frame.width == width; });
    return found != shown.end() ? std::optional(*found) : std::nullopt;
}

Frame DesktopTest::frameOf(xcb_window_t window) {
    return desktop_->windows().visibleFrame(window).value_or(Frame{});
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
    return frameOf(window);
}

}  // namespace tessellon::desktop
