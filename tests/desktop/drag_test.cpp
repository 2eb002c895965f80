// Dragging windows with a real pointer: what is shown meanwhile, where windows land, and what is
// left behind.
#include "dragging.h"

#include <array>
#include <csignal>
#include <string>
#include <string_view>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr std::string_view withCompositor = "WithCompositor";

class DragTest : public Dragging<WindowManagerTest> {
  protected:
    std::string testedUnder() const override {
        return GetParam().substr(0, GetParam().find(withCompositor));
    }
    /// Starts the desktop that the test is run for: a window manager, or one with a compositor.
    void useDragDesktop(Monitors monitors = Monitors::one) {
        useDesktop(monitors);
        if (GetParam().ends_with(withCompositor)) {
            desktop().startCompositor();
        }
    }
};

using CommandDragTest = Dragging<DesktopTest>;

TEST_P(DragTest, commandShowsTheGridAndTheDropSnaps) {
    useDragDesktop();
    program().start();
    const xcb_window_t window = startClock(original);

    // The command key before the drag.
    pressCommand();
    pressTitleBar(window);
    dragTo(leftHalfZone);
    EXPECT_TRUE(waitUntilShown(grid));
    EXPECT_TRUE(waitUntilShown(leftHalf)) << "the preview";
    EXPECT_EQ(desktop().windows().settle(window, carried(original, leftHalfZone)),
              carried(original, leftHalfZone))
        << "the window follows the pointer";
    dragTo(bottomRightZone);
    EXPECT_TRUE(waitUntilShown(bottomRight));
    EXPECT_FALSE(shows(leftHalf));
    drop();
    EXPECT_TRUE(waitUntilNothingIsShown());
    EXPECT_EQ(desktop().windows().settle(window, bottomRight), bottomRight);
    releaseCommand();
    EXPECT_EQ(restored(window).width, original.width);

    // In the middle of it, changing one's mind twice.
    EXPECT_EQ(desktop().windows().place(window, original), original);
    pressTitleBar(window);
    dragBy(120, 90);
    program().waitUntilIdle();
    EXPECT_TRUE(pictures().empty());
    pressCommand();
    EXPECT_TRUE(waitUntilShown(grid));
    releaseCommand();
    EXPECT_TRUE(waitUntilNothingIsShown());
    pressCommand();
    EXPECT_TRUE(waitUntilShown(grid));
    dragTo(topLeftZone);
    EXPECT_TRUE(waitUntilShown(topLeft));
    drop();
    EXPECT_EQ(desktop().windows().settle(window, topLeft), topLeft);
    releaseCommand();
    // A window that is not where it was told to go is told once more.
    program().waitUntilIdle();

    // Let go of before the drop: the window stays where it was carried.
    EXPECT_EQ(desktop().windows().place(window, original), original);
    pressTitleBar(window);
    dragBy(100, 80);
    pressCommand();
    dragTo(rightHalfZone);
    EXPECT_TRUE(waitUntilShown(rightHalf));
    releaseCommand();
    EXPECT_TRUE(waitUntilNothingIsShown());
    drop();
    program().waitUntilIdle();
    EXPECT_EQ(desktop().windows().settle(window, carried(original, rightHalfZone)),
              carried(original, rightHalfZone));
}

// It is the window under the pointer that counts, not the one with the keyboard.
TEST_P(DragTest, windowsThatTakeNoKeyboardAreDragged) {
    useDragDesktop();
    program().start();
    const xcb_window_t active = startClock({900, 500, 700, 450}, "active");
    const xcb_window_t window =
        desktop().startWithWindow({"xclock", "-xrm", "XClock.input: False"});
    ASSERT_EQ(desktop().windows().place(window, original), original);
    desktop().windows().activate(active);
    pressTitleBar(window);
    // The window manager drags already when the program hears of it.
    program().process().signal(SIGSTOP);
    dragBy(40, 40);
    program().process().signal(SIGCONT);
    program().waitUntilIdle();
    dragBy(90, 70);
    pressCommand();
    dragTo(leftHalfZone);
    EXPECT_TRUE(waitUntilShown(leftHalf));
    drop();
    EXPECT_EQ(desktop().windows().settle(window, leftHalf), leftHalf);
    releaseCommand();
}

// Where some window managers put a window into a place of their own when the button goes up, and
// hold on to it.
TEST_P(DragTest, droppedAtTheEdgeOfTheScreen) {
    useDragDesktop();
    program().start();
    const xcb_window_t window = startClock(original);
    struct Drop {
        Position at;
        Frame target;
    };
    const std::array<Drop, 3> drops{
        {{{0, 550}, leftThird}, {{0, 1079}, bottomLeft}, {{1919, 550}, rightThird}}};
    for (const Drop& each : drops) {
        ASSERT_EQ(desktop().windows().place(window, original), original);
        pressCommand();
        pressTitleBar(window);
        dragTo(each.at);
        EXPECT_TRUE(waitUntilShown(each.target));
        drop();
        EXPECT_EQ(desktop().windows().settle(window, each.target), each.target);
        releaseCommand();
        program().waitUntilIdle();
    }

    // A shortcut for one that the window manager has kept.
    ASSERT_EQ(desktop().windows().place(window, original), original);
    pressTitleBar(window);
    dragTo(drops.front().at);
    drop();
    EXPECT_TRUE(waitUntil([&] { return frameOf(window).x <= 0; }));
    program().waitUntilIdle();
    const Position pointer = desktop().pointer().position();
    desktop().windows().activate(window);
    // The keys are down for longer than the window takes.
    const std::array<Key, 3> keys{Key::leftControl, Key::leftAlt, Key::right};
    for (const Key key : keys) {
        desktop().keyboard().press(key);
    }
    EXPECT_EQ(desktop().windows().settle(window, rightHalf), rightHalf);
    for (const Key key : keys) {
        desktop().keyboard().release(key);
    }
    program().waitUntilIdle();
    EXPECT_EQ(snap(window, Held::controlAlt, Key::u, topLeft), topLeft);
    EXPECT_EQ(desktop().pointer().position(), pointer);
}

TEST_P(DragTest, aSnappedWindowThatIsPulledAwayGetsItsSizeBack) {
    useDragDesktop();
    program().start();
    const xcb_window_t window = startClock(original);
    const auto pulledTo = [&](const Frame& size, Position pointer) {
        Frame frame = carried(leftHalf, pointer);
        frame.width = size.width;
        frame.height = size.height;
        return frame;
    };
    const Position aside{600, 300};

    // Dropped anywhere.
    ASSERT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    program().waitUntilIdle();
    pressTitleBar(window);
    dragTo(aside);
    drop();
    EXPECT_EQ(desktop().windows().settle(window, pulledTo(original, aside)),
              pulledTo(original, aside));
    EXPECT_EQ(restored(window), pulledTo(original, aside)) << "nothing is remembered any more";

    // Dropped partly off the screen.
    const Position faraway{70, 300};
    EXPECT_EQ(desktop().windows().place(window, original), original);
    ASSERT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    program().waitUntilIdle();
    pressTitleBar(window);
    dragTo(faraway);
    drop();
    EXPECT_LT(pulledTo(original, faraway).x, -100);
    EXPECT_EQ(desktop().windows().settle(window, pulledTo(original, faraway)),
              pulledTo(original, faraway));

    // Dropped onto another zone: it is the first size that is remembered.
    EXPECT_EQ(desktop().windows().place(window, original), original);
    ASSERT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    program().waitUntilIdle();
    pressTitleBar(window);
    dragTo(aside);
    pressCommand();
    dragTo(bottomRightZone);
    EXPECT_TRUE(waitUntilShown(bottomRight));
    drop();
    EXPECT_EQ(desktop().windows().settle(window, bottomRight), bottomRight);
    releaseCommand();
    program().waitUntilIdle();
    EXPECT_EQ(frameOf(window), bottomRight);
    const Frame back = restored(window);
    EXPECT_EQ(back.width, original.width);
    EXPECT_EQ(back.height, original.height);

    // Not with the preference off.
    program().change({{"restoreOnDrag", false}});
    program().waitUntilIdle();
    EXPECT_EQ(desktop().windows().place(window, original), original);
    ASSERT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    program().waitUntilIdle();
    pressTitleBar(window);
    dragTo(aside);
    drop();
    program().waitUntilIdle();
    EXPECT_EQ(desktop().windows().settle(window, carried(leftHalf, aside)),
              carried(leftHalf, aside));
}

TEST_P(DragTest, resizingIsNotDragging) {
    useDragDesktop();
    program().start();
    const xcb_window_t window = startClock(original);
    struct Edge {
        const char* name;
        std::uint32_t direction;  // of _NET_WM_MOVERESIZE
        bool movesOriginX;
        bool movesOriginY;
    };
    constexpr std::array<Edge, 4> edges{{{"left", 7, true, false},
                                         {"top", 1, false, true},
                                         {"right", 3, false, false},
                                         {"bottom", 5, false, false}}};
    const Position inside{original.x + 200, original.y + 200};
    for (const Edge& edge : edges) {
        ASSERT_EQ(desktop().windows().place(window, original), original);
        desktop().pointer().jumpTo(inside);
        desktop().pointer().press();
        // As programs do that have handles of their own; those of the window managers are wherever
        // their themes have them.
        desktop().x().tellRoot(window, "_NET_WM_MOVERESIZE",
                               {200 + original.x, 200 + original.y, edge.direction, 1, 1});
        const auto isResized = [&] {
            const Frame now = frameOf(window);
            return now.width != original.width || now.height != original.height;
        };
        dragTo({inside.x + 50, inside.y + 40});
        EXPECT_TRUE(waitUntil(isResized)) << edge.name;
        pressCommand();
        dragTo({inside.x + 80, inside.y + 60});
        program().waitUntilIdle();
        EXPECT_TRUE(pictures().empty()) << edge.name;
        drop();
        releaseCommand();
        program().waitUntilIdle();
        const Frame after = frameOf(window);
        EXPECT_EQ(after.x != original.x, edge.movesOriginX) << edge.name;
        EXPECT_EQ(after.y != original.y, edge.movesOriginY) << edge.name;
        EXPECT_TRUE(isResized()) << edge.name;
    }
}

TEST_P(DragTest, thePreviewCanBeSwitchedOff) {
    useDragDesktop();
    program().change({{"showPreview", false}});
    program().start();
    const xcb_window_t window = startClock(original);
    pressTitleBar(window);
    dragBy(60, 40);
    pressCommand();
    dragTo(topLeftZone);
    EXPECT_TRUE(waitUntilShown(grid));
    program().waitUntilIdle();
    EXPECT_EQ(pictures(), std::vector{grid});
    drop();
    EXPECT_EQ(desktop().windows().settle(window, topLeft), topLeft);
    releaseCommand();
}

TEST_P(DragTest, settingsCountInTheMiddleOfADrag) {
    useDragDesktop();
    program().start();
    const xcb_window_t window = startClock(original);
    struct Switch {
        const char* key;
        bool off;
    };
    for (const Switch& setting : {Switch{"dragEnabled", false}, Switch{"paused", true}}) {
        ASSERT_EQ(desktop().windows().place(window, original), original);
        pressTitleBar(window);
        dragBy(60, 40);
        pressCommand();
        dragTo(leftHalfZone);
        EXPECT_TRUE(waitUntilShown(leftHalf)) << setting.key;
        program().change({{setting.key, setting.off}});
        program().waitUntilIdle();
        const Position next{leftHalfZone.x + 20, leftHalfZone.y + 20};
        dragTo(next);
        EXPECT_TRUE(waitUntilNothingIsShown()) << setting.key;
        drop();
        releaseCommand();
        program().waitUntilIdle();
        EXPECT_EQ(frameOf(window), carried(original, next)) << setting.key;
        program().change({{setting.key, !setting.off}});
        program().waitUntilIdle();
    }
}

TEST_P(DragTest, someWindowsAndSomeDragsAreLeftAlone) {
    useDragDesktop();
    program().change({{"ignored", std::string("org.xfce.mousepad")}});
    program().start();
    const auto expectNothing = [&](xcb_window_t window) {
        const Frame before = frameOf(window);
        pressTitleBar(window);
        dragBy(60, 40);
        pressCommand();
        dragTo(leftHalfZone);
        program().waitUntilIdle();
        EXPECT_TRUE(pictures().empty());
        drop();
        releaseCommand();
        program().waitUntilIdle();
        EXPECT_EQ(frameOf(window), carried(before, leftHalfZone));
    };
    const xcb_window_t small = startClock({500, 300, 320, 240});
    expectNothing(small);
    const xcb_window_t ignored = desktop().startWithWindow({"mousepad"});
    desktop().windows().place(ignored, original);
    expectNothing(ignored);

    // A drag that is none yet.
    const xcb_window_t window = startClock(original);
    pressTitleBar(window);
    dragBy(1, 1);
    pressCommand();
    program().waitUntilIdle();
    EXPECT_TRUE(pictures().empty());
    drop();
    releaseCommand();
    program().waitUntilIdle();
    const Frame after = frameOf(window);
    EXPECT_LE(std::abs(after.x - original.x), 1);
    EXPECT_LE(std::abs(after.y - original.y), 1);
    EXPECT_EQ(after.width, original.width);
    EXPECT_EQ(after.height, original.height);
}

// Where the window manager leaves drags with the command key to us.
TEST_F(CommandDragTest, aPressThatIsNoDragMovesNothing) {
    useProgram();
    const xcb_window_t window = startClock(original);
    pressCommand();
    pressTitleBar(window);
    dragBy(3, 3);
    drop();
    releaseCommand();
    program().waitUntilIdle();
    EXPECT_EQ(frameOf(window), original);
    EXPECT_TRUE(desktop().pointer().isFree());
}

// It is told late of the press and of the drag, and acts upon neither by itself.
TEST_F(CommandDragTest, aBusyWindowManagerIsWaitedFor) {
    useProgram();
    const xcb_window_t window = startClock(original);
    pressCommand();
    desktop().windowManagerProcess().signal(SIGSTOP);
    pressTitleBar(window);
    desktop().pointer().moveTo({leftHalfZone.x + 40, leftHalfZone.y + 40});
    // Whatever it does without the window manager's answer it has done then.
    program().waitUntilIdle();
    EXPECT_TRUE(pictures().empty());
    desktop().windowManagerProcess().signal(SIGCONT);
    dragTo(leftHalfZone);
    EXPECT_TRUE(waitUntilShown(leftHalf));
    drop();
    EXPECT_EQ(desktop().windows().settle(window, leftHalf), leftHalf);
    releaseCommand();

    // Not for longer than the button is down.
    program().waitUntilIdle();
    ASSERT_EQ(desktop().windows().place(window, original), original);
    pressCommand();
    desktop().windowManagerProcess().signal(SIGSTOP);
    pressTitleBar(window);
    desktop().pointer().moveTo(leftHalfZone);
    program().waitUntilIdle();
    drop();
    program().waitUntilIdle();
    desktop().windowManagerProcess().signal(SIGCONT);
    releaseCommand();
    ASSERT_TRUE(waitUntil([&] { return desktop().x().windowManagerServes(); }));
    program().waitUntilIdle();
    EXPECT_EQ(frameOf(window), original);
}

TEST_P(DragTest, droppedOnTheOtherMonitor) {
    useDragDesktop(Monitors::twoSideBySide);
    program().start();
    const xcb_window_t window = startClock({100, 300, 600, 450});
    const Frame left{0, dockHeight, 960, 1080 - dockHeight};
    const Frame right{960, dockHeight, 960, 1080 - dockHeight};
    pressCommand();
    pressTitleBar(window);
    dragTo({960 + 192, 552});
    EXPECT_TRUE(waitUntilShown(left));
    EXPECT_TRUE(waitUntilShown(right));
    const Frame target{968, 33, 468, 1039};
    EXPECT_TRUE(waitUntilShown(target));
    drop();
    EXPECT_EQ(desktop().windows().settle(window, target), target);
    releaseCommand();
}

TEST_P(DragTest, aWindowManagerThatDiesLeavesNoPicture) {
    useDragDesktop();
    program().start();
    const xcb_window_t window = startClock(original);
    pressTitleBar(window);
    dragBy(60, 40);
    pressCommand();
    dragTo(leftHalfZone);
    EXPECT_TRUE(waitUntilShown(leftHalf));
    desktop().killWindowManager();
    desktop().pointer().moveTo({leftHalfZone.x + 30, leftHalfZone.y + 30});
    drop();
    releaseCommand();
    EXPECT_TRUE(waitUntilNothingIsShown());
}

INSTANTIATE_TEST_SUITE_P(On, DragTest,
                         ::testing::Values("openbox", "openboxWithCompositor", "xfwm4", "metacity",
                                           "icewm", "kwin"),
                         windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
