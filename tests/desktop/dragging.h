// What tests of drags share: a hand that drags windows by their title bars, and what the program
// shows meanwhile.
#pragma once

#include "desktop_fixture.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon::desktop {

inline constexpr Frame original{500, 300, 700, 450};

// The screen below the dock, which one panel of the grid covers.
inline constexpr Frame grid{0, dockHeight, 1920, 1080 - dockHeight};

// In the middle of zones of that grid.
inline constexpr Position leftHalfZone{365, 552};
inline constexpr Position rightHalfZone{1555, 552};
inline constexpr Position topLeftZone{288, 140};
inline constexpr Position bottomRightZone{1632, 963};

/// Base is a fixture with a desktop and the program on it.
template <typename Base>
class Dragging : public Base {
  protected:
    using Base::afterPress;
    using Base::desktop;
    using Base::frameOf;
    using Base::IsSkipped;
    using Base::pictures;
    using Base::program;

    void TearDown() override {
        if (!IsSkipped() && program().running()) {
            EXPECT_TRUE(waitUntil([&] { return pictures().empty(); }))
                << "something of the program's is left on the screen";
            EXPECT_TRUE(waitUntil([&] { return desktop().pointer().isFree(); }));
        }
        Base::TearDown();
    }

    bool shows(const Frame& frame) {
        const auto shown = pictures();
        return std::find(shown.begin(), shown.end(), frame) != shown.end();
    }
    bool waitUntilShown(const Frame& frame) {
        return waitUntil([&] { return shows(frame); });
    }
    bool waitUntilNothingIsShown() {
        return waitUntil([&] { return pictures().empty(); });
    }

    /// Presses the title bar of the window, about a quarter of its width from the left, where every
    /// theme has nothing but the title; each time elsewhere, or two presses would be a double
    /// click.
    void pressTitleBar(xcb_window_t window) {
        pressTitleBarAtOnce(window);
        // A hand rests for much longer before it moves on.
        program().waitUntilIdle();
    }
    /// The same, without a rest for the program.
    void pressTitleBarAtOnce(xcb_window_t window) {
        const Frame frame = frameOf(window);
        constexpr int middleOfTitleBar = 12;
        constexpr int apart = 25;
        constexpr int places = 5;
        start_ = {frame.x + frame.width / 4 + apart * (presses_++ % places),
                  frame.y + middleOfTitleBar};
        desktop().pointer().jumpTo(start_);
        desktop().pointer().press();
    }
    /// Moves the pointer this far from where the title bar was pressed.
    void dragBy(int x, int y) { dragTo({start_.x + x, start_.y + y}); }
    /// At the speed of a hand: the window manager is with it at every step.
    void dragTo(Position target) {
        const Position from = desktop().pointer().position();
        constexpr int steps = 12;
        for (int step = 0; step <= steps; ++step) {
            desktop().pointer().jumpTo({from.x + (target.x - from.x) * step / steps,
                                        from.y + (target.y - from.y) * step / steps});
            ASSERT_TRUE(waitUntil([&] { return desktop().x().windowManagerServes(); }));
        }
    }
    void drop() { desktop().pointer().release(); }

    void pressCommand() { desktop().keyboard().press(Key::leftSuper); }
    void releaseCommand() { desktop().keyboard().release(Key::leftSuper); }

    /// The frame of a window that was dragged from `before` to where the pointer is.
    Frame carried(const Frame& before, Position pointer) const {
        return {before.x + pointer.x - start_.x, before.y + pointer.y - start_.y, before.width,
                before.height};
    }

    Frame restored(xcb_window_t window) {
        return afterPress(window, Held::controlAlt, Key::backspace);
    }

  private:
    Position start_;
    int presses_ = 0;
};

}  // namespace tessellon::desktop
