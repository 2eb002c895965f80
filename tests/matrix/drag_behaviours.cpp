// Drags of windows by their title bars, onto zones and out of them.
#include "dragging.h"
#include "matrix.h"

#include <array>
#include <chrono>
#include <span>

namespace tessellon::desktop {
namespace {

struct Drop {
    Position at;
    Frame target;
};

// The middles of zones, of every family.
constexpr std::array halvesThirdsAndCenter{
    Drop{leftHalfZone, leftHalf},
    Drop{rightHalfZone, rightHalf},
    Drop{{76, 552}, leftThird},
    Drop{{1843, 552}, rightThird},
    Drop{{960, 140}, {8, 33, 1904, 516}},
    Drop{{960, 963}, {8, 556, 1904, 516}},
    Drop{{960, 552}, {610, 327, 700, 451}},
};
constexpr std::array quarters{
    Drop{topLeftZone, topLeft},
    Drop{{1632, 140}, {964, 33, 948, 516}},
    Drop{{288, 963}, bottomLeft},
    Drop{bottomRightZone, bottomRight},
};

class DragMatrixTest : public Dragging<MatrixTest> {
  protected:
    /// A window that the window manager lets be dragged: some need a moment before they have it
    /// where they show it.
    xcb_window_t startDraggable(Subject subject) {
        const xcb_window_t window = startSubject(subject, original);
        desktop().windows().activate(window);
        const Frame before = frameOf(window);
        EXPECT_TRUE(waitUntil([&] {
            pressTitleBar(window);
            dragBy(60, 40);
            const bool follows =
                waitUntil([&] { return frameOf(window) != before; }, std::chrono::seconds{1});
            drop();
            return follows;
        })) << "it cannot be dragged at all";
        return window;
    }

    void putBack(xcb_window_t window) {
        program().waitUntilIdle();
        desktop().windows().place(window, original);
        program().waitUntilIdle();
    }

    void dragWithCommandFirst(Subject subject, xcb_window_t window, std::span<const Drop> drops) {
        for (const Drop& each : drops) {
            putBack(window);
            const Frame before = frameOf(window);
            pressCommand();
            pressTitleBar(window);
            takeAway(window, before);
            dragTo(each.at);
            dropAt(Row::dragCommandFirst, subject, window, each, before);
        }
    }

    void dragWithCommandLater(Subject subject, xcb_window_t window, std::span<const Drop> drops) {
        for (const Drop& each : drops) {
            putBack(window);
            const Frame before = frameOf(window);
            pressTitleBar(window);
            takeAway(window, before);
            program().waitUntilIdle();
            pressCommand();
            dragTo(each.at);
            dropAt(Row::dragCommandLater, subject, window, each, before);
        }
    }

    /// Pulls the window out of the left half.
    void dragOut(Subject subject, xcb_window_t window) {
        constexpr Position aside{1100, 400};
        putBack(window);
        const Frame before = frameOf(window);
        desktop().keyboard().combination(Held::controlAlt, Key::left);
        EXPECT_EQ(desktop().windows().settleWithinIncrements(window, leftHalf), leftHalf);
        program().waitUntilIdle();
        pressTitleBar(window);
        takeAway(window, leftHalf);
        dragTo(aside);
        program().waitUntilIdle();
        const Frame wanted = carried(leftHalf, aside);
        drop();
        notePlace(Row::dragOut, subject, window, {wanted.x, wanted.y, before.width, before.height},
                  leftHalf);
    }

  private:
    /// Drags a window whose title bar is pressed some way off, as a hand does: it sets off slowly,
    /// and sees to it that the window comes along. Some programs and window managers are a while
    /// behind the pointer, and some begin a drag only then and go on with the next motion.
    void takeAway(xcb_window_t window, const Frame& before) {
        dragBy(1, 0);
        program().waitUntilIdle();
        dragBy(90, 70);
        const Position hand = desktop().pointer().position();
        EXPECT_TRUE(waitUntil([&] {
            if (frameOf(window).x > before.x + 2) {
                return true;
            }
            desktop().pointer().jumpTo({hand.x + 1, hand.y});
            desktop().pointer().jumpTo(hand);
            return false;
        })) << "it is not carried along";
    }

    void dropAt(Row row, Subject subject, xcb_window_t window, const Drop& wanted,
                const Frame& before) {
        if (expected(row, subject) != stays) {
            EXPECT_TRUE(waitUntilShown(wanted.target)) << "the preview";
        }
        drop();
        notePlace(row, subject, window, wanted.target, before);
        releaseCommand();
    }
};

TEST_P(DragMatrixTest, ontoZonesAndOut) {
    begin({Row::dragCommandFirst, Row::dragCommandLater, Row::dragOut});
    program().start();
    for (const Subject subject : textOf(Row::dragOut).subjects) {
        const xcb_window_t window = startDraggable(subject);
        const bool all = subject == Subject::plain;
        dragWithCommandFirst(
            subject, window,
            std::span(halvesThirdsAndCenter).first(all ? halvesThirdsAndCenter.size() : 1));
        dragWithCommandLater(subject, window, std::span(quarters).first(all ? quarters.size() : 1));
        dragOut(subject, window);
        desktop().windows().close(window);
    }
}

INSTANTIATE_TEST_SUITE_P(On, DragMatrixTest, everyWindowManager(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
