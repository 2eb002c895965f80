// The program's own adapters on real windows, for operations that no shortcut reaches yet.
#include "arrangements/apply.h"
#include "arrangements/capture.h"
#include "desktop_fixture.h"
#include "engine/window_engine.h"
#include "ports/real_desktop.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tessellon::desktop {
namespace {

class PortsTest : public WindowManagerTest {
  protected:
    void useDesktopWithoutProgram(Monitors monitors) {
        useDesktop(monitors);
        programMayBeGone();  // this process stands in for it
    }
};

bool hasBundle(const Arrangement& arrangement, const std::string& bundleID, std::int64_t screen) {
    return std::any_of(arrangement.placements.begin(), arrangement.placements.end(),
                       [&](const Arrangement::Placement& placement) {
                           return placement.bundleID == bundleID && placement.screen == screen;
                       });
}

TEST_P(PortsTest, whatWasCapturedIsGivenBack) {
    useDesktopWithoutProgram(Monitors::twoSideBySide);
    const Frame clockFrame{1000, 140, 700, 500};
    const Frame editorFrame{40, 60, 640, 700};
    const xcb_window_t clock = startClock(clockFrame);
    const xcb_window_t editor = desktop().startWithWindow({"mousepad"});
    ASSERT_EQ(desktop().windows().place(editor, editorFrame), editorFrame);
    desktop().windows().activate(clock);

    RealDesktop real(desktop().display());
    WindowEngine engine(real.services());
    const auto arrangement = captureArrangement(engine, "Desk");
    ASSERT_TRUE(arrangement);
    ASSERT_EQ(arrangement->placements.size(), 2U);
    EXPECT_EQ(arrangement->placements[0].bundleID, "XClock") << "the front-most window first";
    EXPECT_TRUE(hasBundle(*arrangement, "XClock", 1));
    EXPECT_TRUE(hasBundle(*arrangement, "org.xfce.mousepad", 0));

    const Frame elsewhere{300, 200, 560, 480};
    ASSERT_EQ(desktop().windows().place(clock, elsewhere), elsewhere);
    ASSERT_EQ(desktop().windows().place(editor, elsewhere), elsewhere);
    applyArrangement(engine, *arrangement);
    EXPECT_EQ(desktop().windows().settle(clock, clockFrame), clockFrame);
    EXPECT_EQ(desktop().windows().settle(editor, editorFrame), editorFrame);
    EXPECT_EQ(engine.memory().records().size(), 2U);
}

TEST_P(PortsTest, theWindowUnderThePointerIsFoundAndItsApplicationNamed) {
    useDesktopWithoutProgram(Monitors::one);
    const xcb_window_t below = startClock({300, 200, 700, 500}, "below");
    const xcb_window_t above = startClock({500, 300, 700, 500}, "above");
    desktop().windows().activate(above);

    RealDesktop real(desktop().display());
    WindowEngine engine(real.services());
    const auto titleAt = [&](Point point) {
        const auto window = engine.windows().windowUnderPointer(point);
        return window ? engine.windows().title(*window) : std::string("nothing");
    };
    EXPECT_EQ(titleAt({320, 600}), "below");
    EXPECT_EQ(titleAt({600, 400}), "above");
    EXPECT_EQ(titleAt({600, 305}), "above") << "on its title bar";
    EXPECT_EQ(titleAt({1700, 900}), "nothing");
    desktop().windows().activate(below);
    EXPECT_EQ(titleAt({600, 400}), "below");

    engine.snap(SnapAction::leftHalf);
    ASSERT_TRUE(engine.lastSnap());
    EXPECT_EQ(engine.lastSnap()->app, "XClock");
    EXPECT_EQ(desktop().windows().settle(below, {8, 33, 948, 1039}), (Frame{8, 33, 948, 1039}));
}

// The press says where in the order of events it belongs, so the server is asked for nothing but
// what has changed.
TEST_P(PortsTest, aPressFindsTheDesktopAsItWasThen) {
    useDesktopWithoutProgram(Monitors::one);
    const xcb_window_t clock = startClock({300, 200, 700, 500});
    desktop().windows().activate(clock);
    RealDesktop real(desktop().display());
    real.listen();
    WindowEngine engine(real.services());
    std::optional<Rect> found;
    std::uint64_t questions = 0;
    const auto handler = real.hotKeyCenter().installHandler([&](const auto&) {
        const auto reads = engine.services().accessibility.beginReads();
        const auto before = real.roundTrips();
        const auto window = engine.windows().focusedWindow();
        found = window ? engine.windows().readFrame(*window) : std::nullopt;
        questions = real.roundTrips() - before;
        return HotKeyEventStatus::handled;
    });
    constexpr std::uint32_t keyU = 32;
    const auto hotKey = real.hotKeyCenter().registerHotKey(
        keyU, hot_key_modifier::control | hot_key_modifier::option, {1, 1});
    ASSERT_TRUE(hotKey);
    const auto press = [&] {
        found.reset();
        desktop().keyboard().combination(Held::controlAlt, Key::u);
        return waitUntil([&] {
            real.serve();
            return found.has_value();
        });
    };
    ASSERT_TRUE(press());  // the first look reads everything
    for (const Frame& frame :
         {Frame{500, 300, 600, 420}, Frame{120, 100, 640, 480}, Frame{500, 300, 600, 420}}) {
        ASSERT_EQ(desktop().windows().place(clock, frame), frame);
        ASSERT_TRUE(press());
        EXPECT_EQ(*found,
                  (Rect{1.0 * frame.x, 1.0 * frame.y, 1.0 * frame.width, 1.0 * frame.height}));
        EXPECT_LE(questions, 1U);
    }
}

INSTANTIATE_TEST_SUITE_P(On, PortsTest, testedWindowManagers(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
