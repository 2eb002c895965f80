// The status item in trays that others wrote, and in a panel of status notifier items: the panel it
// opens lies beside it, or at the pointer, and a press of it opens and closes that once.
#include "harness/status_notifier_host.h"
#include "harness/tray.h"
#include "menu_fixture.h"

#include <memory>
#include <string>
#include <tuple>

namespace tessellon::desktop {
namespace {

constexpr int screenWidth = 1920;
constexpr int screenHeight = 1080;
constexpr int distanceToItem = 6;
constexpr int margin = 8;

class MenuTrayTest : public MenuTesting<DesktopTest> {
  protected:
    std::optional<Frame> icon() { return findTrayIcon(desktop().x(), "Tessellon"); }
    /// Waits until the icon lies in the bar; trays make room for it a moment later.
    Frame iconIn(TrayPlace place) {
        Frame found;
        EXPECT_TRUE(waitUntil([&] {
            found = icon().value_or(Frame{});
            return found.width >= 16 &&
                   (place == TrayPlace::top ? found.y + found.height <= trayHeight
                                            : found.y >= screenHeight - trayHeight);
        })) << "the tray does not show the icon";
        program().waitUntilIdle();
        return icon().value_or(Frame{});
    }
    static Position middleOf(const Frame& frame) {
        return {frame.x + frame.width / 2, frame.y + frame.height / 2};
    }

    /// Clicks the item and expects the panel with its left edge there, beside the item.
    void expectOpensBeside(const Frame& item, TrayPlace place, int left) {
        click(middleOf(item));
        ASSERT_TRUE(waitUntilOpen());
        const auto shown = panel().value_or(MenuPanel({}));
        EXPECT_EQ(shown.frame().x, left);
        if (place == TrayPlace::top) {
            EXPECT_EQ(shown.frame().y, item.y + item.height + distanceToItem);
            EXPECT_GE(shown.frame().y, trayHeight);
        } else {
            EXPECT_EQ(shown.bottom(), item.y - distanceToItem);
            EXPECT_LE(shown.bottom(), screenHeight - trayHeight);
        }
        program().waitUntilIdle();
    }
};

using TrayCase = std::tuple<TrayKind, TrayPlace>;

class MenuInTray : public MenuTrayTest, public ::testing::WithParamInterface<TrayCase> {
  protected:
    TrayKind kind() const { return std::get<0>(GetParam()); }
    TrayPlace place() const { return std::get<1>(GetParam()); }
    void SetUp() override {
        MenuTrayTest::SetUp();
        if (!programExists(trayProgram(kind()))) {
            GTEST_SKIP() << trayProgram(kind()) << " is not installed";
        }
    }
    void beginWithTray(Monitors monitors = Monitors::one) {
        useBareDesktop(monitors);
        desktop().startWindowManager("openbox");
        tray = &startTray(desktop(), kind(), place());
        program().start();
    }

    Process* tray = nullptr;
};

std::string trayCaseName(const ::testing::TestParamInfo<TrayCase>& info) {
    return trayProgram(std::get<0>(info.param)) +
           (std::get<1>(info.param) == TrayPlace::top ? "_top" : "_bottom");
}

TEST_P(MenuInTray, everyClickOpensOrClosesItOnce) {
    beginWithTray();
    const Frame item = iconIn(place());
    const int rightMost = screenWidth - MenuPanel::width - margin;
    for (const Button button : {Button::left, Button::right}) {
        expectOpensBeside(item, place(), rightMost);
        desktop().pointer().click(button);
        EXPECT_TRUE(waitUntilClosed());
        EXPECT_TRUE(staysClosed()) << "the click that closed it must not open it";
        letTheLastClosePass();
    }

    expectOpensBeside(item, place(), rightMost);
    desktop().pointer().press();
    EXPECT_TRUE(waitUntilClosed());
    holdForLong();
    desktop().pointer().release();
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_TRUE(staysClosed()) << "nor one that lasts";
    letTheLastClosePass();
    expectOpensBeside(item, place(), rightMost);
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
}

TEST_P(MenuInTray, theTrayMayDieWhileItIsOpen) {
    beginWithTray();
    const int rightMost = screenWidth - MenuPanel::width - margin;
    expectOpensBeside(iconIn(place()), place(), rightMost);
    killTray(desktop(), *tray);
    program().waitUntilIdle();
    EXPECT_TRUE(panel());
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
    letTheLastClosePass();

    startTray(desktop(), kind(), place());
    expectOpensBeside(iconIn(place()), place(), rightMost);
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
}

TEST_P(MenuInTray, itStaysOnTheDisplayOfTheItem) {
    // Both trays take the first display, and not the whole screen.
    beginWithTray(Monitors::twoSideBySide);
    const Frame item = iconIn(place());
    ASSERT_LT(item.x, screenWidth / 2);
    expectOpensBeside(item, place(), screenWidth / 2 - MenuPanel::width - margin);
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
}

INSTANTIATE_TEST_SUITE_P(Of, MenuInTray,
                         ::testing::Combine(::testing::Values(TrayKind::tint2, TrayKind::trayer),
                                            ::testing::Values(TrayPlace::top, TrayPlace::bottom)),
                         trayCaseName);

class MenuElsewhereInTray : public MenuTrayTest {
  protected:
    void SetUp() override {
        MenuTrayTest::SetUp();
        if (!programExists("trayer")) {
            GTEST_SKIP() << "trayer is not installed";
        }
    }
    /// A tray of one icon whose left end is that far from the left edge of the screen.
    void beginWithTrayAt(int left, Monitors monitors) {
        useBareDesktop(monitors);
        desktop().startWindowManager("openbox");
        desktop().start({"trayer", "--edge", "top", "--align", "left", "--distancefrom", "left",
                         "--distance", std::to_string(left), "--widthtype", "request",
                         "--heighttype", "pixel", "--height", std::to_string(trayHeight),
                         "--SetDockType", "true", "--SetPartialStrut", "true"});
        program().start();
    }
};

TEST_F(MenuElsewhereInTray, itIsCenteredBelowTheItemWhereThereIsRoom) {
    beginWithTrayAt(600, Monitors::one);
    const Frame item = iconIn(TrayPlace::top);
    EXPECT_GE(item.x, 600);
    expectOpensBeside(item, TrayPlace::top, item.x + item.width / 2 - MenuPanel::width / 2);
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
}

TEST_F(MenuElsewhereInTray, itDoesNotReachOverToTheDisplayBeside) {
    beginWithTrayAt(screenWidth / 2 + 40, Monitors::twoSideBySide);
    const Frame item = iconIn(TrayPlace::top);
    EXPECT_GE(item.x, screenWidth / 2);
    expectOpensBeside(item, TrayPlace::top, screenWidth / 2 + margin);
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
}

class MenuInHost : public MenuTrayTest {
  protected:
    void begin(Monitors monitors = Monitors::one) {
        useBareDesktop(monitors);
        desktop().startWindowManager("openbox");
    }
    void startHost() { host = std::make_unique<StatusNotifierHost>(desktop().environment()); }
    void TearDown() override {
        host.reset();
        DesktopTest::TearDown();
    }
    bool waitUntilOnList() {
        return waitUntil([&] { return host->items().size() == 1; });
    }
    /// What the docks leave of the screen, as the window manager says.
    Frame workArea() {
        const auto area = desktop().x().values(desktop().x().root(), "_NET_WORKAREA");
        return area.size() < 4 ? Frame{}
                               : Frame{static_cast<int>(area[0]), static_cast<int>(area[1]),
                                       static_cast<int>(area[2]), static_cast<int>(area[3])};
    }
    /// A click of the item as panels have it: they tell of it when the button is up.
    void press() { desktop().pointer().press(); }
    void releaseAndActivate() {
        const Position place = desktop().pointer().position();
        desktop().pointer().release();
        ASSERT_EQ(host->items().size(), 1U);
        EXPECT_TRUE(host->activate(host->items().front(), place.x, place.y));
    }
    void clickItemAt(Position place) {
        desktop().pointer().moveTo(place);
        press();
        releaseAndActivate();
    }

    std::unique_ptr<StatusNotifierHost> host;
};

TEST_F(MenuInHost, itOpensByThePointerInsideOfTheDisplay) {
    begin(Monitors::twoSideBySide);
    startHost();
    program().start();
    ASSERT_TRUE(waitUntilOnList());
    constexpr int half = MenuPanel::width / 2;
    constexpr int border = screenWidth / 2;
    constexpr int leftMost = margin;
    constexpr int rightMost = screenWidth - MenuPanel::width - margin;
    struct Case {
        Position pointer;
        int left;
        bool isBelow;
    };
    for (const Case& at :
         {Case{{480, 10}, 480 - half, true}, Case{{1440, 100}, 1440 - half, true},
          Case{{3, 3}, leftMost, true}, Case{{border - 5, 1070}, border - 338, false},
          Case{{border + 5, 20}, border + margin, true}, Case{{1915, 20}, rightMost, true},
          Case{{1919, 1079}, rightMost, false}}) {
        clickItemAt(at.pointer);
        ASSERT_TRUE(waitUntilOpen());
        const auto shown = panel().value_or(MenuPanel({}));
        EXPECT_EQ(shown.frame().x, at.left) << at.pointer.x;
        EXPECT_EQ(at.isBelow ? shown.frame().y : shown.bottom(),
                  at.pointer.y + (at.isBelow ? distanceToItem : -distanceToItem))
            << at.pointer.x;
        program().waitUntilIdle();
        clickItemAt(at.pointer);
        EXPECT_TRUE(waitUntilClosed());
        EXPECT_TRUE(staysClosed()) << at.pointer.x;
        letTheLastClosePass();
    }
}

TEST_F(MenuInHost, itStaysClearOfTheBarThatTheItemIsIn) {
    if (!programExists("tint2")) {
        GTEST_SKIP() << "tint2 is not installed";
    }
    begin();
    startHost();
    program().start();
    ASSERT_TRUE(waitUntilOnList());
    for (const TrayPlace edge : {TrayPlace::top, TrayPlace::bottom}) {
        const bool isTop = edge == TrayPlace::top;
        Process& bar = startTray(desktop(), TrayKind::tint2, edge);
        ASSERT_TRUE(waitUntil([&] { return workArea().y == (isTop ? trayHeight : 0); }));
        ASSERT_TRUE(waitUntil([&] { return workArea().height == screenHeight - trayHeight; }));
        program().waitUntilIdle();
        clickItemAt({1000, isTop ? 10 : screenHeight - 10});
        ASSERT_TRUE(waitUntilOpen());
        const auto shown = panel().value_or(MenuPanel({}));
        EXPECT_EQ(isTop ? shown.frame().y : shown.bottom(),
                  isTop ? trayHeight : screenHeight - trayHeight);
        desktop().keyboard().tap(Key::escape);
        EXPECT_TRUE(waitUntilClosed());
        letTheLastClosePass();
        killTray(desktop(), bar);
        ASSERT_TRUE(waitUntil([&] { return workArea().height == screenHeight; }));
    }
}

TEST_F(MenuInHost, aLongPressThatClosesItDoesNotOpenItAgain) {
    begin();
    startHost();
    program().start();
    ASSERT_TRUE(waitUntilOnList());
    constexpr Position place{1800, 10};
    clickItemAt(place);
    ASSERT_TRUE(waitUntilOpen());
    program().waitUntilIdle();
    press();
    EXPECT_TRUE(waitUntilClosed());
    holdForLong();
    releaseAndActivate();
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_TRUE(staysClosed());
    letTheLastClosePass();
    clickItemAt(place);
    EXPECT_TRUE(waitUntilOpen());
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
}

TEST_F(MenuInHost, hostsMayComeLateAndStartAgain) {
    begin();
    program().start();
    constexpr Position place{900, 10};
    for (int round = 0; round < 3; ++round) {
        startHost();
        ASSERT_TRUE(waitUntilOnList()) << round;
        clickItemAt(place);
        EXPECT_TRUE(waitUntilOpen()) << round;
        host.reset();
        desktop().keyboard().tap(Key::escape);
        EXPECT_TRUE(waitUntilClosed());
        letTheLastClosePass();
    }
}

TEST_F(MenuInHost, theItemGoesOverFromATrayToAHostAndBack) {
    if (!programExists("tint2")) {
        GTEST_SKIP() << "tint2 is not installed";
    }
    begin();
    startTray(desktop(), TrayKind::tint2);
    program().start();
    iconIn(TrayPlace::top);
    startHost();
    ASSERT_TRUE(waitUntilOnList());
    EXPECT_TRUE(waitUntil([&] { return !icon(); })) << "it is shown twice";
    clickItemAt({600, 900});
    ASSERT_TRUE(waitUntilOpen());
    EXPECT_EQ(panel().value_or(MenuPanel({})).bottom(), 900 - distanceToItem) << "at the pointer";
    program().waitUntilIdle();

    // The tray has it again while the panel is open, which stays.
    host.reset();
    const Frame item = iconIn(TrayPlace::top);
    EXPECT_TRUE(panel());
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
    letTheLastClosePass();
    expectOpensBeside(item, TrayPlace::top, screenWidth - MenuPanel::width - margin);
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
}

}  // namespace
}  // namespace tessellon::desktop
