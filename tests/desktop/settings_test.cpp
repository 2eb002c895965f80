// The settings window of the running program: what is changed there counts for the next action,
// and what is changed elsewhere is shown there.
#include "assistance_fixture.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessellon::desktop {
namespace {

namespace fs = std::filesystem;

constexpr Frame original{300, 200, 700, 500};
constexpr std::string_view useControlSuper = "Use Control Super instead of Control Alt";

class SettingsWindowTest : public AssistanceTesting {
  protected:
    bool isHeld(Key key, int modifiers) {
        return desktop().x().combinationIsHeld(static_cast<std::uint8_t>(key),
                                               static_cast<std::uint16_t>(modifiers));
    }
    bool isTileHeld() {
        return isHeld(Key::t, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1 | XCB_MOD_MASK_4);
    }
    /// The same as snap() for other modifiers.
    Frame pressed(xcb_window_t window, const std::vector<Key>& held, Key key,
                  const Frame& expected) {
        desktop().windows().activate(window);
        desktop().keyboard().combination(held, key);
        return desktop().windows().settle(window, expected);
    }
    /// An application of the user's own that the desktop's clock belongs to.
    void installClock(const std::string& identifier, const std::string& name) {
        const auto folder = desktop().home() / ".local/share/applications";
        fs::create_directories(folder);
        std::ofstream(folder / (identifier + ".desktop"))
            << "[Desktop Entry]\nType=Application\nName=" << name
            << "\nExec=xclock\nStartupWMClass=XClock\n";
    }
    bool waitUntilArrangements(std::string_view contain) {
        return waitUntil([&] {
            const auto list = stored<StoredData>("arrangements");
            return list && list->bytes.find(contain) != std::string::npos;
        });
    }
};

using GeneralSettingsTest = SettingsWindowTest;

TEST_P(GeneralSettingsTest, theyCountAtOnceAndFollowTheFile) {
    begin();
    const auto window = startClock(original);
    startWithSettings("General");
    const auto gap = focused("slider", "Gap between windows");
    type({Key::right, Key::right, Key::right, Key::right});
    EXPECT_TRUE(waitUntilStored("gap", 12.0));
    const Frame narrower{8, 33, 946, 1039};
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, narrower), narrower);
    program().waitUntilIdle();  // it writes the file, too, where the window was before
    program().change({{"gap", 20.0}});
    EXPECT_TRUE(waitUntil([&] { return bus().value(gap) == 20; }));

    EXPECT_FALSE(isTileHeld());
    toggle("Tile this display");
    EXPECT_TRUE(waitUntil([&] { return isTileHeld(); }));
    EXPECT_EQ(snap(window, Held::controlAltSuper, Key::t, usableArea), usableArea);
    toggle("Tile this display");
    EXPECT_TRUE(waitUntil([&] { return !isTileHeld(); }));

    const auto entry = desktop().home() / ".config/autostart/app.tessellon.Tessellon.desktop";
    toggle("Launch at login");
    EXPECT_TRUE(waitUntil([&] { return fs::exists(entry); }));
    EXPECT_TRUE(waitUntilIs(control("check box", "Launch at login"), AccessibleState::checked));
    toggle("Launch at login");
    EXPECT_TRUE(waitUntil([&] { return !fs::exists(entry); }));
}

INSTANTIATE_TEST_SUITE_P(On, GeneralSettingsTest,
                         ::testing::Values("openbox", "xfwm4", "metacity", "icewm"),
                         windowManagerName);

using TakenShortcutsTest = SettingsWindowTest;

TEST_P(TakenShortcutsTest, theyGiveWayToOthers) {
    begin(Monitors::one, WindowManagerKeys::asShipped);
    programMaySpeak();
    const auto window = startClock(original);
    startWithSettings("Shortcuts");
    const std::vector<Key> controlSuper{Key::leftControl, Key::leftSuper};
    press(useControlSuper);
    EXPECT_TRUE(
        waitUntil([&] { return isHeld(Key::left, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4); }));
    EXPECT_EQ(pressed(window, controlSuper, Key::left, leftHalf), leftHalf);
    EXPECT_FALSE(isShown("push button", useControlSuper));

    press("Reset to defaults");
    control("push button", useControlSuper);
    EXPECT_FALSE(isHeld(Key::u, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_4));
    EXPECT_EQ(snap(window, Held::controlAlt, Key::u, topLeft), topLeft);
}

// Others that hold some of them, icewm for one, keep everything to themselves while Super is down.
INSTANTIATE_TEST_SUITE_P(On, TakenShortcutsTest, ::testing::Values("openbox", "xfwm4", "metacity"),
                         windowManagerName);

TEST_P(SettingsWindowTest, theKeyboardAloneWillDo) {
    begin();
    startWithSettings("General");
    std::string reached;
    const auto focusMoved = [&] {
        const auto objects = bus().tree(self());
        const auto found = std::find_if(objects.begin(), objects.end(), [](const auto& object) {
            return object.is(AccessibleState::focused) && object.role != "frame";
        });
        return found != objects.end() && std::exchange(reached, found->name) != found->name;
    };
    const std::string_view wanted = "Repeat shortcut cycles sizes";
    const bool cycles = control("check box", wanted).is(AccessibleState::checked);
    for (int tabs = 0; tabs < 20 && reached != wanted; ++tabs) {
        type({Key::tab});
        ASSERT_TRUE(waitUntil(focusMoved)) << "the focus stays at " << reached;
    }
    type({Key::space});
    EXPECT_TRUE(waitUntilStored("cycle", !cycles));
    desktop().keyboard().combination({Key::leftControl}, Key::pageDown);
    EXPECT_TRUE(waitUntilIs(control("radio button", "Snap zones"), AccessibleState::checked));
    type({Key::escape});
    EXPECT_TRUE(waitUntil([&] { return !desktop().windows().isShown(settingsWindow()); }));
}

TEST_P(SettingsWindowTest, whatThePanelChangesIsShown) {
    begin();
    const auto window = startClock(original);
    startWithSettings("General");
    const auto flip = [&](MenuSwitch which) {
        desktop().windows().activate(window);
        click(openedAt({1600, 40}).switchOf(which));
        program().waitUntilIdle();
        desktop().keyboard().tap(Key::escape);
        EXPECT_TRUE(waitUntilClosed());
    };
    flip(MenuSwitch::tiling);
    EXPECT_TRUE(waitUntilIs(control("check box", "Tile this display"), AccessibleState::checked));
    flip(MenuSwitch::pause);
    control("label", "Snapping is paused");
    showPage("Rules");
    flip(MenuSwitch::ignore);
    control("push button", "Remove XClock");
}

TEST_P(SettingsWindowTest, aShortcutIsRecorded) {
    begin();
    const auto window = startClock(original);
    startWithSettings("Shortcuts");
    desktop().windows().activate(settingsWindow());
    press("Left half, Control Alt Left Arrow");
    control("push button", "Left half, Press new keys…");
    const std::vector<Key> controlSuper{Key::leftControl, Key::leftSuper};
    desktop().keyboard().combination(controlSuper, Key::k);
    control("push button", "Left half, Control Super K");
    EXPECT_EQ(pressed(window, controlSuper, Key::k, leftHalf), leftHalf);
    EXPECT_FALSE(isHeld(Key::left, XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1));
}

TEST_P(SettingsWindowTest, applicationsAreIgnoredByNameAndByIdentifier) {
    begin();
    installClock("lark", "Tiger");
    const auto window = startClock(original);
    startWithSettings("Rules");
    const auto remove = [&] {
        press("Remove Tiger");
        EXPECT_TRUE(waitUntilStored<std::string>("ignored", ""));
    };
    focused("text", "App to add");
    desktop().keyboard().combination({Key::leftShift}, Key::t);
    type({Key::i, Key::g, Key::e, Key::r});
    press("Add app");
    EXPECT_TRUE(waitUntilStored<std::string>("ignored", "lark"));
    EXPECT_EQ(afterPress(window, Held::controlAlt, Key::left), original);
    remove();
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);

    focused("text", "App to add");
    type({Key::l, Key::a, Key::r, Key::k, Key::enter});
    EXPECT_TRUE(waitUntilStored<std::string>("ignored", "lark"));
    EXPECT_EQ(afterPress(window, Held::controlAlt, Key::u), leftHalf);
    remove();
    EXPECT_EQ(snap(window, Held::controlAlt, Key::u, topLeft), topLeft);
}

TEST_P(SettingsWindowTest, aDisplayHasAGapOfItsOwn) {
    begin(Monitors::twoSideBySide);
    const auto window = startClock({1100, 300, 500, 400});
    startWithSettings("Displays");
    control("check box", "Own edge gap");
    auto toggles = bus().tree(self());
    std::erase_if(toggles, [](const auto& each) { return each.name != "Own edge gap"; });
    std::erase_if(toggles, [](const auto& each) { return each.role != "check box"; });
    ASSERT_EQ(toggles.size(), 2);
    EXPECT_TRUE(bus().act(toggles.back(), "Toggle"));
    const auto gap = control("slider", "Gap at this display's edges");
    EXPECT_TRUE(bus().setValue(gap, 20));
    const Frame left{980, 45, 456, 1015};
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, left), left);
    EXPECT_TRUE(bus().act(toggles.back(), "Toggle"));
    const Frame asEverywhere{968, 33, 468, 516};
    EXPECT_EQ(snap(window, Held::controlAlt, Key::u, asEverywhere), asEverywhere);
}

TEST_P(SettingsWindowTest, arrangementsAreSavedAppliedRenamedAndDeleted) {
    begin();
    constexpr Frame second{1050, 300, 600, 400};
    constexpr Frame elsewhere{500, 450, 500, 400};
    const auto one = startClock(original, "one");
    const auto two = startClock(second, "two");
    startWithSettings("Arrangements");
    press("Save current arrangement");
    ASSERT_TRUE(waitUntilArrangements(R"("name":"Arrangement 1")"));
    EXPECT_EQ(desktop().windows().place(one, elsewhere), elsewhere);
    EXPECT_EQ(desktop().windows().place(two, elsewhere), elsewhere);
    press("Apply Arrangement 1");
    EXPECT_EQ(desktop().windows().settle(one, original), original);
    EXPECT_EQ(desktop().windows().settle(two, second), second);

    const auto name = focused("text", "Name of arrangement 1");
    EXPECT_TRUE(bus().setCaret(name, 3));
    type({Key::k});
    EXPECT_TRUE(waitUntilArrangements(R"("name":"Arrkangement 1")"));
    EXPECT_EQ(bus().caret(name), 4);
    type({Key::l});
    EXPECT_TRUE(waitUntilArrangements(R"("name":"Arrklangement 1")"));
    EXPECT_EQ(bus().caret(name), 5);
    EXPECT_EQ(bus().text(name), "Arrklangement 1");

    press("Delete Arrklangement 1");
    EXPECT_TRUE(waitUntil([&] { return !isShown("text", "Name of arrangement 1"); }));
    EXPECT_TRUE(waitUntil([&] {
        const auto list = stored<StoredData>("arrangements");
        return !list || list->bytes == "[]";
    }));
}

TEST_P(SettingsWindowTest, thePreviewAndTheTourAreShown) {
    begin();
    startWithSettings("Snap zones");
    const auto isPreviewed = [&] {
        const auto shown = pictures();
        return std::find(shown.begin(), shown.end(), leftHalf) != shown.end();
    };
    press("See it");
    EXPECT_TRUE(waitUntil(isPreviewed));
    EXPECT_TRUE(waitUntil([&] { return !isPreviewed(); }));

    showPage("About");
    const bool checks =
        control("check box", "Automatically check for updates").is(AccessibleState::checked);
    toggle("Automatically check for updates");
    EXPECT_TRUE(waitUntilStored("automaticUpdateChecks", !checks));
    press("Show welcome tour");
    const auto tour = desktop().windows().waitForTitled(self(), tourTitle);
    ASSERT_TRUE(tour);
    EXPECT_TRUE(waitUntil([&] { return desktop().windows().active() == tour; }));
}

TEST_P(SettingsWindowTest, theTourWaitsForAWindowManager) {
    useBareDesktop();
    startAssistance();
    program().forgetSettings();
    program().launch();
    ASSERT_TRUE(program().waitUntilRunning());
    press("Get started");
    control("label", "Let Tessellon move your windows");
    const auto next = control("push button", "Continue");
    EXPECT_FALSE(next.is(AccessibleState::enabled));
    desktop().startWindowManager(GetParam());
    EXPECT_TRUE(waitUntilIs(next, AccessibleState::enabled));
    EXPECT_TRUE(bus().act(next, "Press"));
    control("label", "Give it a spin");
}

INSTANTIATE_TEST_SUITE_P(On, SettingsWindowTest, ::testing::Values("openbox"), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
