// What docks leave of monitors, and how monitors are told apart.
#include "platform/x11/backing_scales.h"
#include "platform/x11/edid.h"
#include "platform/x11/x11_displays.h"

#include <algorithm>
#include <array>
#include <ostream>

#include <gtest/gtest.h>

namespace tessellon {

inline void PrintTo(const Rect& r, std::ostream* out) {
    *out << '(' << r.x << ", " << r.y << ", " << r.width << ", " << r.height << ')';
}

}  // namespace tessellon

namespace tessellon::x11 {
namespace {

constexpr Rect leftMonitor{0, 0, 1920, 1080};
constexpr Rect rightMonitor{1920, 200, 1280, 800};
constexpr Rect root{0, 0, 3200, 1080};

ClientWindow dock(const Rect& frame, const Strut& strut) {
    ClientWindow window;
    window.kind = WindowKind::dock;
    window.client = frame;
    window.strut = strut;
    return window;
}

TEST(VisibleArea, TakesAwayTheDocksOfThisMonitorOnly) {
    Strut top;
    top.top = 25;
    top.topEnd = 1919;
    const auto panel = dock({0, 0, 1920, 25}, top);
    EXPECT_EQ(visibleArea(leftMonitor, root, {&panel}, std::nullopt), (Rect{0, 25, 1920, 1055}));
    EXPECT_EQ(visibleArea(rightMonitor, root, {&panel}, std::nullopt), rightMonitor);
}

TEST(VisibleArea, MeasuresFromTheEdgesOfTheWholeDesktop) {
    // Below the right monitor there are 80 points of nothing; its dock counts them too.
    Strut bottom;
    bottom.bottom = 80 + 40;
    bottom.bottomStart = 1920;
    bottom.bottomEnd = 3199;
    const auto panel = dock({1920, 960, 1280, 40}, bottom);
    EXPECT_EQ(visibleArea(rightMonitor, root, {&panel}, std::nullopt),
              (Rect{1920, 200, 1280, 760}));
    // A dock at the inner edge reserves everything from the desktop's edge up to it.
    Strut left;
    left.left = 1920 + 60;
    left.leftStart = 200;
    left.leftEnd = 999;
    const auto inner = dock({1920, 200, 60, 800}, left);
    EXPECT_EQ(visibleArea(rightMonitor, root, {&inner}, std::nullopt),
              (Rect{1980, 200, 1220, 800}));
    EXPECT_EQ(visibleArea(leftMonitor, root, {&inner}, std::nullopt), leftMonitor);
}

TEST(VisibleArea, LeavesRoomForWindowsWhateverDocksSay) {
    Strut absurd;
    absurd.top = 700;
    absurd.bottom = 700;
    absurd.topEnd = absurd.bottomEnd = 3199;
    auto panel = dock({0, 0, 1920, 700}, absurd);
    EXPECT_EQ(visibleArea(leftMonitor, root, {&panel}, std::nullopt), leftMonitor);
    absurd.bottom = 280;
    panel.strut = absurd;
    EXPECT_EQ(visibleArea(leftMonitor, root, {&panel}, std::nullopt), (Rect{0, 700, 1920, 100}));
    absurd.bottom = 281;
    panel.strut = absurd;
    EXPECT_EQ(visibleArea(leftMonitor, root, {&panel}, std::nullopt), leftMonitor);
    EXPECT_EQ(visibleArea(leftMonitor, leftMonitor, {}, Rect{0, 0, 1920, 99}), leftMonitor);
}

TEST(VisibleArea, BelievesTheWorkAreaOfASingleMonitor) {
    EXPECT_EQ(visibleArea(leftMonitor, leftMonitor, {}, Rect{0, 0, 1920, 1050}),
              (Rect{0, 0, 1920, 1050}));
    EXPECT_EQ(visibleArea(leftMonitor, leftMonitor, {}, Rect{5000, 0, 10, 10}), leftMonitor);
}

TEST(VisibleArea, TakesNothingFromTheWorkAreaForDocksOfADisplayThatIsOff) {
    Strut left;
    left.left = 60;
    left.leftEnd = 1079;
    const auto own = dock({0, 0, 60, 1080}, left);
    Strut top;
    top.top = 81;
    top.topStart = 1920;
    top.topEnd = 3199;
    const auto stranded = dock({1920, 56, 1280, 25}, top);
    Strut right;
    right.right = 1920 + 50;
    right.rightEnd = 1079;
    const auto beyond = dock({0, 0, 50, 1080}, right);
    EXPECT_EQ(
        visibleArea(leftMonitor, leftMonitor, {&own, &stranded, &beyond}, Rect{60, 81, 1860, 999}),
        (Rect{60, 0, 1860, 1080}));
    // What no dock asked for is the window manager's own.
    EXPECT_EQ(visibleArea(leftMonitor, leftMonitor, {&own, &stranded}, Rect{60, 82, 1860, 960}),
              (Rect{60, 82, 1860, 960}));
}

TEST(BackingScale, IsThePixelsOfTheModeForEachPoint) {
    EXPECT_EQ(backingScale({1920, 1080}, XCB_RANDR_ROTATION_ROTATE_0, {1920, 1080}), (Size{1, 1}));
    EXPECT_EQ(backingScale({1920, 1080}, XCB_RANDR_ROTATION_ROTATE_180, {2400, 1350}),
              (Size{0.8, 0.8}));
    EXPECT_EQ(backingScale({3840, 2160}, XCB_RANDR_ROTATION_ROTATE_90, {1080, 1920}), (Size{2, 2}));
    EXPECT_EQ(
        backingScale({1920, 1080}, XCB_RANDR_ROTATION_ROTATE_270 | XCB_RANDR_ROTATION_REFLECT_X,
                     {1080, 1920}),
        (Size{1, 1}));
    EXPECT_EQ(backingScale({1920, 1080}, XCB_RANDR_ROTATION_ROTATE_0, {}), (Size{1, 1}));
}

TEST(MonitorIdentity, ComesFromTheMonitorsOwnData) {
    std::array<std::uint8_t, 128> edid{0x00, 0xff, 0xff, 0xff, 0xff, 0xff, 0xff, 0x00};
    EXPECT_EQ(monitorIdentity(edid)->name, "");
    const std::array<std::uint8_t, 18> name{0,   0,   0,   0xfc, 0,   'P', 'a', 'n', 'e',
                                            'l', ' ', '7', '\n', ' ', ' ', ' ', ' ', ' '};
    std::copy(name.begin(), name.end(), edid.begin() + 72);
    const auto first = monitorIdentity(edid);
    ASSERT_TRUE(first);
    EXPECT_EQ(first->name, "Panel 7");
    EXPECT_EQ(first->uuid.size(), 36U);
    EXPECT_EQ(monitorIdentity(edid), first);
    EXPECT_FALSE(first->hasSerialNumber);
    edid[12] = 1;  // the serial number
    EXPECT_NE(monitorIdentity(edid)->uuid, first->uuid);
    EXPECT_TRUE(monitorIdentity(edid)->hasSerialNumber);
    std::fill_n(edid.begin() + 12, 4, std::uint8_t{1});
    EXPECT_FALSE(monitorIdentity(edid)->hasSerialNumber) << "a way to have none";
    edid[75] = 0xff;  // the name becomes the serial number as text
    EXPECT_TRUE(monitorIdentity(edid)->hasSerialNumber);
    EXPECT_EQ(monitorIdentity(edid)->name, "");

    EXPECT_EQ(monitorIdentity(std::span(edid).first(127)), std::nullopt);
    edid[1] = 0;
    EXPECT_EQ(monitorIdentity(edid), std::nullopt);
}

}  // namespace
}  // namespace tessellon::x11
