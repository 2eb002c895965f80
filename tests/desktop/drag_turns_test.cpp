// Drags that take a turn: of windows that change their size by being pulled, given up in the
// middle, or with a desktop that changes under them.
#include "dragging.h"

#include <csignal>
#include <cstdint>

namespace tessellon::desktop {
namespace {

class UnmaximizingDragTest : public Dragging<WindowManagerTest> {
  protected:
    void pullOutOntoAZone(xcb_window_t window);
};

void UnmaximizingDragTest::pullOutOntoAZone(xcb_window_t window) {
    for (const bool commandFirst : {true, false}) {
        ASSERT_EQ(desktop().windows().place(window, original), original);
        desktop().windows().maximize(window);
        program().waitUntilIdle();
        if (commandFirst) {
            pressCommand();
        }
        pressTitleBar(window);
        dragBy(90, 200);
        EXPECT_TRUE(waitUntil([&] { return frameOf(window).width == original.width; }));
        if (!commandFirst) {
            pressCommand();
        }
        dragTo(leftHalfZone);
        EXPECT_TRUE(waitUntilShown(grid));
        EXPECT_TRUE(waitUntilShown(leftHalf)) << "the preview";
        drop();
        EXPECT_TRUE(waitUntilNothingIsShown());
        EXPECT_EQ(desktop().windows().settle(window, leftHalf), leftHalf);
        releaseCommand();
        program().waitUntilIdle();
    }
}

TEST_P(UnmaximizingDragTest, aMaximizedWindowIsPulledOutOntoAZone) {
    useProgram();
    pullOutOntoAZone(startClock(original));
}

// Its shadow comes after its size.
TEST_P(UnmaximizingDragTest, soIsOneWithDecorationsOfItsOwn) {
    useProgram();
    pullOutOntoAZone(
        desktop().startWithWindow({"env", "GTK_CSD=1", "mousepad", "--disable-server"}));
}

// The others keep a maximized window where it is, or maximized.
INSTANTIATE_TEST_SUITE_P(On, UnmaximizingDragTest, ::testing::Values("xfwm4", "metacity", "kwin"),
                         windowManagerName);

class MaximizedDragTest : public Dragging<WindowManagerTest> {};

TEST_P(MaximizedDragTest, aWindowThatIsCarriedMaximizedToASmallerDisplayHasTheGridThere) {
    const Frame smallGrid{1280, dockHeight, 640, 1080 - dockHeight};
    const Frame leftHalfThere{1288, 33, 308, 1039};
    useDesktop(Monitors::described({{0, 0, 1280, 1080}, {1280, 0, 640, 1080}}));
    program().start();
    const xcb_window_t window = startClock({100, 200, 700, 450});
    const Frame maximized{0, dockHeight, 1280, 1080 - dockHeight};
    static_cast<void>(desktop().windows().maximizes(window, std::chrono::milliseconds{0}));
    ASSERT_EQ(desktop().windows().settle(window, maximized), maximized);
    program().waitUntilIdle();
    pressCommand();
    pressTitleBar(window);
    dragTo({1600, 300});
    EXPECT_EQ(frameOf(window).x, smallGrid.x) << "this window manager carries it";
    EXPECT_TRUE(waitUntilShown(smallGrid));
    dragTo({1400, 552});
    EXPECT_TRUE(waitUntilShown(leftHalfThere)) << "the preview";
    drop();
    EXPECT_TRUE(waitUntilNothingIsShown());
    EXPECT_EQ(desktop().windows().settle(window, leftHalfThere), leftHalfThere);
    releaseCommand();
}

INSTANTIATE_TEST_SUITE_P(On, MaximizedDragTest, ::testing::Values("openbox"), windowManagerName);

class AbortedDragTest : public Dragging<WindowManagerTest> {
  protected:
    /// Drags a window that is on its way already over a zone, has Escape put it back, and drops it
    /// there.
    void abortAndDrop(xcb_window_t window) {
        pressCommand();
        dragTo(leftHalfZone);
        EXPECT_TRUE(waitUntilShown(leftHalf));
        // With the command key it would be another combination.
        releaseCommand();
        desktop().keyboard().tap(Key::escape);
        EXPECT_EQ(desktop().windows().settle(window, original), original);
        pressCommand();
        EXPECT_TRUE(waitUntilShown(leftHalf));
        drop();
        EXPECT_TRUE(waitUntilNothingIsShown());
        releaseCommand();
        program().waitUntilIdle();
        EXPECT_EQ(frameOf(window), original);
    }
};

TEST_P(AbortedDragTest, aWindowThatEscapePutBackStaysThere) {
    useProgram();
    const xcb_window_t window = startClock(original);
    pressTitleBar(window);
    dragBy(60, 40);
    abortAndDrop(window);
}

// On a busy machine the window manager may have moved the window before the program hears of the
// press.
TEST_P(AbortedDragTest, aProgramThatComesLateKnowsWhereTheWindowWas) {
    useProgram();
    const xcb_window_t window = startClock(original);
    desktop().windows().activate(window);
    desktop().keyboard().combination(Held::controlAlt, Key::left);
    ASSERT_EQ(desktop().windows().settle(window, leftHalf), leftHalf);
    desktop().keyboard().combination(Held::controlAlt, Key::backspace);
    ASSERT_EQ(desktop().windows().settle(window, original), original);
    program().waitUntilIdle();
    program().process().signal(SIGSTOP);
    pressTitleBarAtOnce(window);
    ASSERT_TRUE(waitUntil([&] { return desktop().x().windowManagerServes(); }));
    dragBy(60, 40);
    EXPECT_TRUE(waitUntil([&] { return frameOf(window) != original; }));
    program().process().signal(SIGCONT);
    program().waitUntilIdle();
    // It may hear of many steps as of one, and it takes two to tell a drag.
    dragBy(70, 50);
    program().waitUntilIdle();
    abortAndDrop(window);
}

INSTANTIATE_TEST_SUITE_P(On, AbortedDragTest, testedWindowManagers(), windowManagerName);

class CompositedDragTest : public Dragging<DesktopTest> {
  protected:
    /// What the user sees at a place: red, green and blue in one number.
    std::uint32_t colourAt(Position place) {
        constexpr std::uint32_t allPlanes = ~0U;
        auto* const x = desktop().x().connection();
        const Reply<xcb_get_image_reply_t> image(
            xcb_get_image_reply(x,
                                xcb_get_image(x, XCB_IMAGE_FORMAT_Z_PIXMAP, desktop().x().root(),
                                              static_cast<std::int16_t>(place.x),
                                              static_cast<std::int16_t>(place.y), 1, 1, allPlanes),
                                nullptr));
        if (!image || xcb_get_image_data_length(image.get()) < 3) {
            return 0;
        }
        const std::uint8_t* bytes = xcb_get_image_data(image.get());
        return static_cast<std::uint32_t>(bytes[0] | bytes[1] << 8U | bytes[2] << 16U);
    }
};

TEST_F(CompositedDragTest, theGridFollowsACompositorThatGoesAndComes) {
    useDesktop();
    constexpr std::uint32_t background = 0xc0b0a0;
    desktop().x().setBackground(background);
    desktop().startCompositor();
    program().start();
    const xcb_window_t window = startClock({1100, 300, 500, 400});
    pressTitleBar(window);
    dragBy(60, 40);
    pressCommand();
    dragTo(rightHalfZone);
    EXPECT_TRUE(waitUntilShown(rightHalf));
    // In a zone, beside window and preview, and off the zone's label.
    const Position free{leftHalfZone.x - 60, leftHalfZone.y - 100};
    const auto isTinted = [&] {
        const auto seen = colourAt(free);
        return seen != background && (seen & 0xffU) > 0x60;
    };
    EXPECT_TRUE(waitUntil(isTinted)) << std::hex << colourAt(free);
    desktop().killCompositor();
    EXPECT_TRUE(waitUntil([&] { return colourAt(free) == background; }))
        << std::hex << colourAt(free);
    EXPECT_TRUE(shows(grid));
    EXPECT_TRUE(shows(rightHalf));
    desktop().startCompositor();
    EXPECT_TRUE(waitUntil(isTinted)) << std::hex << colourAt(free);
    drop();
    EXPECT_EQ(desktop().windows().settle(window, rightHalf), rightHalf);
    releaseCommand();
}

class LateDragTest : public Dragging<WindowManagerTest> {
  protected:
    /// Where a pointer on the left half comes to rest over another window.
    static constexpr Frame below{leftHalfZone.x - 250, leftHalfZone.y - 200, 500, 400};

    /// Drags a window whose title bar is pressed to the left half while the window manager rests.
    void dragPastTheWindowManager() {
        ASSERT_TRUE(waitUntil([&] { return desktop().x().windowManagerServes(); }));
        program().waitUntilIdle();
        desktop().windowManagerProcess().signal(SIGSTOP);
        desktop().pointer().jumpTo(leftHalfZone);
        program().waitUntilIdle();
        EXPECT_TRUE(pictures().empty());
        desktop().windowManagerProcess().signal(SIGCONT);
    }
    void dropOnTheLeftHalf(xcb_window_t window, xcb_window_t other) {
        EXPECT_TRUE(waitUntilShown(leftHalf)) << "the preview";
        drop();
        EXPECT_EQ(desktop().windows().settle(window, leftHalf), leftHalf);
        EXPECT_EQ(frameOf(other), below) << "the window that the pointer came to rest over";
        releaseCommand();
    }
};

// It moves the window when the pointer has come to rest already.
TEST_P(LateDragTest, theWindowFollowsAPointerThatRests) {
    useProgram();
    const xcb_window_t other = startClock(below);
    const xcb_window_t window = startClock(original);
    pressTitleBar(window);
    pressCommand();
    dragPastTheWindowManager();
    dropOnTheLeftHalf(window, other);
}

INSTANTIATE_TEST_SUITE_P(On, LateDragTest, ::testing::Values("xfwm4", "metacity"),
                         windowManagerName);

using LaterDragTest = LateDragTest;

// The others begin to move it with the motion after that.
TEST_P(LaterDragTest, theWindowFollowsWhenThePointerMovesOn) {
    useProgram();
    const xcb_window_t other = startClock(below);
    const xcb_window_t window = startClock(original);
    pressTitleBar(window);
    dragPastTheWindowManager();
    EXPECT_TRUE(waitUntil([&] {
        const int aside = desktop().pointer().position().x == leftHalfZone.x ? 1 : 0;
        desktop().pointer().jumpTo({leftHalfZone.x + aside, leftHalfZone.y});
        return frameOf(window).x < original.x;
    })) << "it is not carried along";
    pressCommand();
    dropOnTheLeftHalf(window, other);
}

INSTANTIATE_TEST_SUITE_P(On, LaterDragTest, ::testing::Values("openbox", "icewm", "kwin"),
                         windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
