// The icon in trays that others wrote: taken in wherever and whenever there is one, seen on light
// and dark, pressed, and nowhere once its tray is gone.
#include "tray_fixture.h"

#include <csignal>
#include <optional>
#include <string>

namespace tessellon::desktop {
namespace {

class EveryTray : public TrayIconTest, public ::testing::WithParamInterface<TrayKind> {
  protected:
    void SetUp() override {
        TrayIconTest::SetUp();
        if (!programExists(trayProgram(GetParam()))) {
            GTEST_SKIP() << trayProgram(GetParam()) << " is not installed";
        }
        begin();
    }
};

TEST_P(EveryTray, hasTheIconHoweverLateAndOften) {
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
    Process& dark = startTray(desktop(), GetParam(), TrayPlace::top, TrayTone::dark);
    showIcon();
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::top) && isLightOnDark(); }));
    killTray(desktop(), dark);
    startTray(desktop(), GetParam(), TrayPlace::top, TrayTone::light);
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::top) && isDarkOnLight(); }));

    // In the middle of the left edge there is no glyph, but the highlight.
    const int plain = lightness(1, middle());
    icon->setHighlighted(true);
    EXPECT_TRUE(comes(
        [&] { return lightness(1, middle()) < plain - 20 && lightness(middle(), middle()) < 60; }));
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
    void SetUp() override {
        TrayIconTest::SetUp();
        if (!programExists("tint2")) {
            GTEST_SKIP() << "tint2 is not installed";
        }
        begin();
    }
};

TEST_F(Tint2, underACompositorShowsTheIconInATone) {
    desktop().startCompositor();
    Process& light =
        startTray(desktop(), TrayKind::tint2Translucent, TrayPlace::top, TrayTone::light);
    showIcon();
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::top) && isDarkOnLight(); }));
    const int plain = lightness(1, middle());
    icon->setHighlighted(true);
    EXPECT_TRUE(comes([&] { return lightness(1, middle()) < plain - 20; }));
    icon->setHighlighted(false);
    killTray(desktop(), light);
    startTray(desktop(), TrayKind::tint2Translucent, TrayPlace::top, TrayTone::dark);
    EXPECT_TRUE(comes([&] { return isIn(TrayPlace::top) && isLightOnDark(); }));
}

// The same process and another tray; that is also how it reads its settings again.
TEST_F(Tint2, whichBeginsAnewGetsTheIconBack) {
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
