// What the panel's switches and buttons do in the running program: to the settings file, and to
// windows of others; and a program that is started again where there is no tray.
#include "menu_fixture.h"

#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>
#include <variant>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr Frame original{100, 300, 700, 450};
constexpr Frame elsewhere{420, 480, 640, 420};

// The panel that opens here lies clear of the windows.
constexpr Position pointerHome{1600, 40};

class MenuControlsTest : public MenuTesting<DesktopTest> {
  protected:
    /// The setting as the file has it; T's own nothing when it has none.
    template <typename T>
    T stored(const char* key) {
        const auto settings = program().settings().value_or(StoredValues{});
        const auto found = settings.find(key);
        return found != settings.end() ? std::get<T>(found->second) : T{};
    }
    template <typename T>
    bool comesToBe(const char* key, const T& value) {
        return waitUntil([&] { return stored<T>(key) == value; });
    }
    /// The frame after everything that was asked of the program was done.
    Frame frameInTheEnd(xcb_window_t window) {
        program().waitUntilIdle();
        return frameOf(window);
    }
    xcb_window_t startActiveClock(const Frame& frame, const std::string& title) {
        const xcb_window_t window = startClock(frame, title);
        desktop().windows().activate(window);
        return window;
    }
};

TEST_F(MenuControlsTest, pausedTilesDoNothing) {
    useProgram();
    const auto window = startActiveClock(original, "clock");
    const auto shown = openedAt(pointerHome);
    click(shown.switchOf(MenuSwitch::pause));
    EXPECT_TRUE(comesToBe("paused", true));
    click(shown.tile(MenuTile::leftHalf));
    EXPECT_EQ(frameInTheEnd(window), original);
    EXPECT_TRUE(panel()) << "a tile that is off closes nothing";
    EXPECT_EQ(afterPress(window, Held::controlAlt, Key::left), original);

    // The switch acts at once on the tiles of the panel that is open.
    click(shown.switchOf(MenuSwitch::pause));
    EXPECT_TRUE(comesToBe("paused", false));
    click(shown.tile(MenuTile::topRight));
    EXPECT_EQ(desktop().windows().settle(window, topRight), topRight);
    EXPECT_TRUE(waitUntilClosed());
}

TEST_F(MenuControlsTest, anIgnoredProgramIsLeftAloneUntilTheSwitchIsOffAgain) {
    useProgram();
    program().change({{"ignored", std::string("org.example.other")}});
    program().waitUntilIdle();
    const auto window = startActiveClock(original, "clock");
    click(openedAt(pointerHome).switchOf(MenuSwitch::ignore));
    EXPECT_TRUE(comesToBe("ignored", std::string("org.example.other\nXClock")));
    EXPECT_EQ(afterPress(window, Held::controlAlt, Key::left), original);
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());

    // There is no window for the tiles of a panel that opens now.
    const auto whileIgnored = opened();
    click(whileIgnored.tile(MenuTile::leftHalf));
    EXPECT_EQ(frameInTheEnd(window), original);
    EXPECT_TRUE(panel());
    click(whileIgnored.switchOf(MenuSwitch::ignore));
    EXPECT_TRUE(comesToBe("ignored", std::string("org.example.other")));
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
    click(opened().tile(MenuTile::leftHalf));
    EXPECT_EQ(desktop().windows().settle(window, leftHalf), leftHalf);
    EXPECT_TRUE(waitUntilClosed());
}

TEST_F(MenuControlsTest, tileNowIsThereWhileTilingIsOn) {
    useProgram();
    const auto below = startActiveClock(elsewhere, "below");
    const auto front = startActiveClock(original, "front");
    const auto shown = openedAt(pointerHome);
    click(shown.tileNow());
    program().waitUntilIdle();
    EXPECT_TRUE(panel()) << "there is no button yet";
    click(shown.switchOf(MenuSwitch::tiling));
    EXPECT_TRUE(comesToBe("tilingEnabled", true));
    EXPECT_EQ(panel().value_or(MenuPanel({})).frame(), shown.frame()) << "it keeps its size";
    click(shown.tileNow());
    EXPECT_TRUE(waitUntilClosed());
    const Frame main{8, 33, 1139, 1039};
    const Frame stacked{1154, 33, 758, 1039};
    EXPECT_EQ(desktop().windows().settle(front, main), main);
    EXPECT_EQ(desktop().windows().settle(below, stacked), stacked);

    click(opened().switchOf(MenuSwitch::tiling));
    EXPECT_TRUE(comesToBe("tilingEnabled", false));
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
}

TEST_F(MenuControlsTest, whatIsSavedIsAppliedByItsRow) {
    useProgram();
    const auto first = startActiveClock(original, "first");
    const auto second = startActiveClock(elsewhere, "second");
    ASSERT_EQ(snap(first, Held::controlAlt, Key::left, leftHalf), leftHalf);
    ASSERT_EQ(snap(second, Held::controlAlt, Key::i, topRight), topRight);
    const auto saved = [&] {
        const auto text = stored<StoredData>("arrangements").bytes;
        const auto list = nlohmann::json::parse(text, nullptr, false);
        std::vector<std::string> names;
        if (list.is_array()) {
            for (const auto& arrangement : list) {
                names.push_back(arrangement.value("name", ""));
            }
        }
        return names;
    };
    const auto before = openedAt(pointerHome);
    click(before.saveCurrent());
    EXPECT_TRUE(waitUntilClosed());
    EXPECT_TRUE(waitUntil([&] { return saved() == std::vector<std::string>{"Arrangement 1"}; }));

    desktop().windows().place(first, original);
    desktop().windows().place(second, elsewhere);
    const auto after = opened();
    EXPECT_GT(after.frame().height, before.frame().height) << "there is no row for it";
    click(after.arrangement(0));
    EXPECT_TRUE(waitUntilClosed());
    // Kept as shares of the display, so that a pixel may be lost on the way.
    const auto isNear = [&](xcb_window_t window, const Frame& target) {
        const Frame now = frameOf(window);
        return std::abs(now.x - target.x) <= 1 && std::abs(now.y - target.y) <= 1 &&
               std::abs(now.width - target.width) <= 2 && std::abs(now.height - target.height) <= 2;
    };
    EXPECT_TRUE(waitUntil([&] { return isNear(first, leftHalf) && isNear(second, topRight); }))
        << frameOf(first) << frameOf(second);

    click(opened().saveCurrent());
    EXPECT_TRUE(
        waitUntil([&] { return saved().size() == 2 && saved().back() == "Arrangement 2"; }));
    EXPECT_TRUE(waitUntilClosed());
}

TEST_F(MenuControlsTest, startingItAgainOpensThePanelAtThePointer) {
    useDesktop(Monitors::twoSideBySide);
    program().start();
    constexpr int distance = 6;
    const auto shown = openedAt({1300, 100});
    EXPECT_EQ(shown.frame().x, 1300 - MenuPanel::width / 2);
    EXPECT_EQ(shown.frame().y, 100 + distance);
    desktop().pointer().moveTo({300, 200});
    startAgain();
    program().waitUntilIdle();
    EXPECT_EQ(panel().value_or(MenuPanel({})).frame(), shown.frame()) << "an open one stays";
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
    // Asked for in so many words it comes at once, however short ago it was closed.
    const auto again = opened();
    EXPECT_EQ(again.frame().x, 300 - MenuPanel::width / 2);
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
}

TEST_F(MenuControlsTest, withoutAWindowManagerTheTilesAreOff) {
    useProgram();
    const auto window = startActiveClock(original, "clock");
    desktop().killWindowManager();
    program().waitUntilIdle();
    const auto geometry = [&] {
        const Reply<xcb_get_geometry_reply_t> reply(
            xcb_get_geometry_reply(desktop().x().connection(),
                                   xcb_get_geometry(desktop().x().connection(), window), nullptr));
        return reply ? Frame{reply->x, reply->y, reply->width, reply->height} : Frame{};
    };
    const Frame before = geometry();
    ASSERT_NE(before, Frame{});
    const auto shown = openedAt(pointerHome);
    click(shown.tile(MenuTile::leftHalf));
    program().waitUntilIdle();
    EXPECT_EQ(geometry(), before);
    EXPECT_TRUE(panel());
    // What needs no window works all the same.
    click(shown.switchOf(MenuSwitch::pause));
    EXPECT_TRUE(comesToBe("paused", true));
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
}

TEST_F(MenuControlsTest, itOpensWhereThereNeverWasAWindowManager) {
    useBareDesktop();
    program().launch();
    ASSERT_TRUE(program().waitUntilRunning());
    program().waitUntilIdle();
    const auto shown = openedAt({1600, 40});
    click(shown.tile(MenuTile::maximize));
    program().waitUntilIdle();
    EXPECT_TRUE(panel());
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntilClosed());
}

}  // namespace
}  // namespace tessellon::desktop
