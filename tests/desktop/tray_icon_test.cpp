// The icon in trays that others wrote: taken in wherever and whenever there is one, seen on light
// and dark, pressed, and nowhere once its tray is gone.
#include "desktop_fixture.h"
#include "harness/tray.h"
#include "ports/real_desktop.h"

#include <csignal>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <unistd.h>

namespace tessellon::desktop {
namespace {

constexpr double screenWidth = 1920;
constexpr double screenHeight = 1080;

/// A block in the middle half of the icon.
IconImage block(int size, IconColor color) {
    IconImage image{size, {}};
    for (int y = 0; y < size; ++y) {
        for (int x = 0; x < size; ++x) {
            const bool isInside =
                x >= size / 4 && x < size - size / 4 && y >= size / 4 && y < size - size / 4;
            image.pixels.push_back(isInside ? 0xff000000 | color : 0);
        }
    }
    return image;
}

class TrayIconTest : public DesktopTest {
  protected:
    void begin() {
        useBareDesktop();
        programMayBeGone();  // this process stands in for it
        desktop().startWindowManager("openbox");
    }
    void showIcon() {
        real = std::make_unique<RealDesktop>(desktop().display());
        real->listen();
        icon = real->makeTrayIcon(block);
        availability = icon->availabilityChanged().subscribe([this] { ++changes; });
        pressed = icon->activated().subscribe([this] { ++presses; });
        icon->setShown(true);
    }
    void TearDown() override {
        icon.reset();
        real.reset();
        DesktopTest::TearDown();
    }

    bool comes(const std::function<bool()>& state) {
        return waitUntil([&] {
            real->serve();
            return state();
        });
    }
    /// Whether the icon is where a bar with a tray at its right end has it.
    bool isIn(TrayPlace place) {
        const auto frame = icon->frame();
        const Rect bar{screenWidth - 100, place == TrayPlace::top ? screenHeight - trayHeight : 0.0,
                       100, trayHeight};
        return frame && frame->width >= 16 && frame->height >= 16 &&
               frame->intersection(bar) == frame;
    }
    /// How light a pixel of the screen is, 0…255; -1 off the screen. The place is counted from the
    /// icon's top left corner.
    int lightness(int right, int down) {
        const auto frame = icon->frame();
        if (!frame) {
            return -1;
        }
        return lightnessAt(static_cast<int>(frame->minX()) + right,
                           static_cast<int>(screenHeight - frame->maxY()) + down);
    }
    int lightnessAt(int x, int y) {
        const Reply<xcb_get_image_reply_t> reply(
            xcb_get_image_reply(desktop().x().connection(),
                                xcb_get_image(desktop().x().connection(), XCB_IMAGE_FORMAT_Z_PIXMAP,
                                              desktop().x().root(), static_cast<std::int16_t>(x),
                                              static_cast<std::int16_t>(y), 1, 1, ~0U),
                                nullptr));
        return reply ? xcb_get_image_data(reply.get())[1] : -1;
    }
    int middle() { return static_cast<int>(icon->frame().value_or(Rect{}).width) / 2; }
    bool isDarkOnLight() { return lightness(middle(), middle()) < 60 && lightness(1, 1) > 200; }
    bool isLightOnDark() { return lightness(middle(), middle()) > 200 && lightness(1, 1) < 60; }

    Position iconsMiddle() {
        const auto frame = icon->frame().value_or(Rect{});
        return {static_cast<int>(frame.midX()), static_cast<int>(screenHeight - frame.midY())};
    }
    /// Nothing of ours is left on the desktop when its tray is gone.
    bool liesAround() { return !desktop().windows().unmanagedOf(getpid()).empty(); }

    std::unique_ptr<RealDesktop> real;
    std::unique_ptr<TrayIcon> icon;
    Token availability;
    Token pressed;
    int changes = 0;
    int presses = 0;
};

class EveryTray : public TrayIconTest, public ::testing::WithParamInterface<TrayKind> {
  protected:
    bool beginWithTray() {
        if (!programExists(trayProgram(GetParam()))) {
            return false;
        }
        begin();
        return true;
    }
};

TEST_P(EveryTray, hasTheIconHoweverLateAndOften) {
    if (!beginWithTray()) {
        GTEST_SKIP() << trayProgram(GetParam()) << " is not installed";
    }
    showIcon();
    EXPECT_FALSE(icon->isAvailable());
    EXPECT_EQ(icon->frame(), std::nullopt);

    Process& first = startTray(desktop(), GetParam(), TrayPlace::top);
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::top) && isLightOnDark(); }));
    EXPECT_TRUE(icon->isAvailable());
    EXPECT_EQ(changes, 1);

    killTray(desktop(), first);
    EXPECT_TRUE(comes([&] { return !icon->isAvailable(); }));
    EXPECT_EQ(icon->frame(), std::nullopt);
    EXPECT_FALSE(liesAround());
    EXPECT_EQ(changes, 2);

    Process& second = startTray(desktop(), GetParam(), TrayPlace::bottom);
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::bottom) && isLightOnDark(); }));
    icon->setShown(false);
    EXPECT_EQ(icon->frame(), std::nullopt);
    EXPECT_TRUE(icon->isAvailable()) << "the tray is still there";
    icon->setShown(true);
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::bottom) && isLightOnDark(); }));

    // An orderly end gives the window back instead of taking it along.
    second.stop();
    EXPECT_TRUE(comes([&] { return !icon->isAvailable(); }));
    EXPECT_EQ(icon->frame(), std::nullopt);
    EXPECT_FALSE(liesAround());
}

TEST_P(EveryTray, tellsOfPresses) {
    if (!beginWithTray()) {
        GTEST_SKIP() << trayProgram(GetParam()) << " is not installed";
    }
    startTray(desktop(), GetParam(), TrayPlace::bottom);
    showIcon();
    ASSERT_TRUE(comes([&] { return isIn(TrayPlace::bottom) && isLightOnDark(); }));
    auto& pointer = desktop().pointer();
    pointer.moveTo(iconsMiddle());
    int expected = 0;
    for (const auto button : {Button::left, Button::right, Button::middle}) {
        pointer.press(button);
        ++expected;
        EXPECT_TRUE(comes([&] { return presses == expected; }));
        EXPECT_TRUE(pointer.isFree()) << "what opens may take the pointer at once";
        pointer.release(button);
    }
    constexpr auto wheelUp = static_cast<Button>(4);
    pointer.click(wheelUp);
    pointer.click(Button::left);
    EXPECT_TRUE(comes([&] { return presses == expected + 1; }));
}

TEST_P(EveryTray, showsTheIconInATone) {
    if (!beginWithTray()) {
        GTEST_SKIP() << trayProgram(GetParam()) << " is not installed";
    }
    Process& dark = startTray(desktop(), GetParam(), TrayPlace::top, TrayTone::dark);
    showIcon();
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::top) && isLightOnDark(); }));
    killTray(desktop(), dark);
    startTray(desktop(), GetParam(), TrayPlace::top, TrayTone::light);
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::top) && isDarkOnLight(); }));

    // In the middle of the left edge there is no glyph, but the highlight.
    const int plain = lightness(1, middle());
    icon->setHighlighted(true);
    EXPECT_TRUE(comes([&] { return lightness(1, middle()) < plain - 20; }));
    EXPECT_TRUE(lightness(middle(), middle()) < 60);
    icon->setHighlighted(false);
    EXPECT_TRUE(comes([&] { return lightness(1, middle()) == plain; }));
}

INSTANTIATE_TEST_SUITE_P(
    Of, EveryTray, ::testing::Values(TrayKind::tint2, TrayKind::tint2Translucent, TrayKind::trayer),
    [](const auto& tested) {
        return trayProgram(tested.param) +
               (tested.param == TrayKind::tint2Translucent ? "Translucent" : "");
    });

class Tint2 : public TrayIconTest {
  protected:
    bool beginWithTray() {
        if (!programExists("tint2")) {
            return false;
        }
        begin();
        return true;
    }
};

TEST_F(Tint2, underACompositorShowsTheIconInATone) {
    if (!beginWithTray()) {
        GTEST_SKIP() << "tint2 is not installed";
    }
    desktop().startCompositor();
    Process& light =
        startTray(desktop(), TrayKind::tint2Translucent, TrayPlace::top, TrayTone::light);
    showIcon();
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::top) && isDarkOnLight(); }));
    const int plain = lightness(1, middle());
    icon->setHighlighted(true);
    // It multiplies colors by their alpha which have been already: little is left.
    EXPECT_TRUE(comes([&] { return lightness(1, middle()) < plain; }));
    icon->setHighlighted(false);
    killTray(desktop(), light);
    startTray(desktop(), TrayKind::tint2Translucent, TrayPlace::top, TrayTone::dark);
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::top) && isLightOnDark(); }));
}

// The same process and another tray; that is also how it reads its settings again.
TEST_F(Tint2, whichBeginsAnewGetsTheIconBack) {
    if (!beginWithTray()) {
        GTEST_SKIP() << "tint2 is not installed";
    }
    Process& tray = startTray(desktop(), TrayKind::tint2, TrayPlace::top, TrayTone::dark);
    showIcon();
    ASSERT_TRUE(comes([&] { return isIn(TrayPlace::top) && isLightOnDark(); }));
    const auto changesBefore = changes;
    tray.signal(SIGUSR1);
    ASSERT_TRUE(comes([&] { return changes > changesBefore; }));
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::top) && isLightOnDark(); }));
}

}  // namespace
}  // namespace tessellon::desktop
