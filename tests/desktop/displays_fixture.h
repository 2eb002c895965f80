// What the tests of several displays share: layouts of displays with docks, and where windows
// belong on them.
#pragma once

#include "desktop_fixture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace tessellon::desktop {

#ifdef TESSELLON_MONITORS_ARE_OUTPUTS
inline constexpr auto monitorKind = Monitors::Kind::outputs;
#else
inline constexpr auto monitorKind = Monitors::Kind::described;
#endif

/// The edge gap that the program starts with.
inline constexpr int edgeGap = 8;

/// What a display and its docks leave for windows.
inline Frame within(const Frame& display, const Edges& docks = {}, int gap = edgeGap) {
    return shrunk(shrunk(display, docks), {gap, gap, gap, gap});
}

/// A place in fractions of an area, and the keys that ask for it.
struct SnapPlace {
    Key key;
    double left;
    double top;
    double right;
    double bottom;
};

inline constexpr SnapPlace leftHalfPlace{Key::left, 0, 0, 0.5, 1};
inline constexpr SnapPlace rightHalfPlace{Key::right, 0.5, 0, 1, 1};
inline constexpr SnapPlace bottomRightPlace{Key::k, 0.5, 0.5, 1, 1};
inline constexpr SnapPlace maximizedPlace{Key::enter, 0, 0, 1, 1};

inline constexpr std::array snapPlaces{
    leftHalfPlace,
    rightHalfPlace,
    SnapPlace{Key::up, 0, 0, 1, 0.5},
    SnapPlace{Key::down, 0, 0.5, 1, 1},
    SnapPlace{Key::u, 0, 0, 0.5, 0.5},
    SnapPlace{Key::i, 0.5, 0, 1, 0.5},
    SnapPlace{Key::j, 0, 0.5, 0.5, 1},
    bottomRightPlace,
    SnapPlace{Key::d, 0, 0, 1.0 / 3, 1},
    SnapPlace{Key::f, 1.0 / 3, 0, 2.0 / 3, 1},
    SnapPlace{Key::g, 2.0 / 3, 0, 1, 1},
    maximizedPlace,
};

/// That place in an area, with half of the gap between windows on the edges inside of it.
inline Frame placedIn(const SnapPlace& place, const Frame& area) {
    constexpr double halfGap = 4;
    const auto near = [&](double start, double length, double share) {
        return static_cast<int>(std::floor(start + length * share + (share > 0 ? halfGap : 0)));
    };
    const auto far = [&](double start, double length, double share) {
        return static_cast<int>(std::ceil(start + length * share - (share < 1 ? halfGap : 0)));
    };
    const int x = near(area.x, area.width, place.left);
    const int y = near(area.y, area.height, place.top);
    return {x, y, far(area.x, area.width, place.right) - x,
            far(area.y, area.height, place.bottom) - y};
}

/// Displays with docks on some edges.
struct DisplayLayout {
    std::vector<Frame> displays;
    std::vector<Edges> docks;
    /// The displays from left to right and from top to bottom.
    std::vector<std::size_t> order;

    Monitors monitors() const {
        return monitorKind == Monitors::Kind::outputs ? Monitors::outputs(displays)
                                                      : Monitors::described(displays);
    }
    std::string nameOf(std::size_t display) const { return monitors().all.at(display).name; }
    /// What its docks leave of a display.
    Frame visible(std::size_t display) const {
        return shrunk(displays.at(display), docks.at(display));
    }
    Frame usable(std::size_t display, int gap = edgeGap) const {
        return within(displays.at(display), docks.at(display), gap);
    }
};

/// The wide one in the middle of a row is the primary one; that on the left, at the origin, stays
/// where it is whatever is unplugged.
inline const DisplayLayout rowOfThree{
    .displays = {{1280, 56, 1920, 1080}, {0, 0, 1280, 1024}, {3200, 300, 1024, 768}},
    .docks = {{.top = 25}, {.left = 60}, {.bottom = 40}},
    .order = {1, 0, 2}};

/// The primary one has one above and one to its right, which begins lower.
inline const DisplayLayout stackAndSide{
    .displays = {{320, 1080, 1280, 1024}, {0, 0, 1920, 1080}, {1920, 700, 1024, 768}},
    .docks = {{.bottom = 40}, {.top = 25}, {.right = 50}},
    .order = {1, 0, 2}};

/// Base is a fixture with a desktop and the program on it.
template <typename Base>
class DisplaysTesting : public Base {
  protected:
    using Base::desktop;
    using Base::program;
    using Base::snap;
    using Base::startClock;

    void SetUp() override {
        Base::SetUp();
        if (monitorKind == Monitors::Kind::outputs && !programExists("Xorg")) {
            GTEST_SKIP() << "there is no server with outputs";
        }
    }

    /// A desktop with these displays and their docks, under the window manager of the test.
    void begin(const DisplayLayout& layout) {
        useDisplays(layout.monitors());
        addDocks(layout);
    }

    /// A desktop with these monitors and no docks.
    void useDisplays(const Monitors& monitors) {
        this->useBareDesktop(monitors);
        desktop().startWindowManager(this->testedUnder());
    }

    void addDocks(const DisplayLayout& layout) {
        for (std::size_t i = 0; i < layout.displays.size(); ++i) {
            addDocks(layout.displays[i], layout.docks.at(i));
        }
    }
    void addDocks(const Frame& display, const Edges& docks) {
        const auto [x, y, width, height] = display;
        if (docks.left > 0) {
            desktop().addDock({{x, y, docks.left, height}, Edge::left});
        }
        if (docks.right > 0) {
            desktop().addDock({{x + width - docks.right, y, docks.right, height}, Edge::right});
        }
        if (docks.top > 0) {
            desktop().addDock({{x, y, width, docks.top}, Edge::top});
        }
        if (docks.bottom > 0) {
            desktop().addDock({{x, y + height - docks.bottom, width, docks.bottom}, Edge::bottom});
        }
    }

    /// A frame in the middle of a display.
    static Frame middleOf(const Frame& display) {
        return {display.x + display.width / 2 - 200, display.y + display.height / 2 - 150, 400,
                300};
    }
    xcb_window_t startClockOn(const Frame& display, const std::string& title = "clock") {
        return startClock(middleOf(display), title);
    }

    void expectSnaps(xcb_window_t window, const SnapPlace& place, const Frame& area) {
        const Frame expected = placedIn(place, area);
        EXPECT_EQ(snap(window, Held::controlAlt, place.key, expected), expected);
    }

    /// Puts the window in the middle of a display, once the program is done with it: while it makes
    /// sure of a frame it would undo that.
    void expectMovesTo(xcb_window_t window, const Frame& display) {
        program().waitUntilIdle();
        const Frame frame = middleOf(display);
        ASSERT_EQ(desktop().windows().place(window, frame), frame);
    }

    /// Waits until the window manager and the program have dealt with a change of the displays.
    void settleDisplays() {
        ASSERT_TRUE(waitUntil([&] { return desktop().x().windowManagerServes(); }));
        program().waitUntilIdle();
    }
};

/// The window managers that are told of monitors of this kind.
inline auto windowManagersWithDisplays() {
#ifdef TESSELLON_MONITORS_ARE_OUTPUTS
    return ::testing::Values("openbox", "xfwm4", "metacity", "marco", "muffin", "mutter", "kwin",
                             "fluxbox", "icewm", "jwm");
#else
    return testedWindowManagers();
#endif
}

}  // namespace tessellon::desktop
