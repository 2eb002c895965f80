// The launcher on a desktop in memory: when it opens and where, how it closes and what it runs.
#include "launcher/launcher.h"

#include "app/notification_names.h"
#include "base/modifier_flag.h"
#include "engine/engine_fixture.h"
#include "launcher/fake_launcher_views.h"
#include "platform/memory/memory_beep.h"

#include <any>
#include <string>
#include <vector>

namespace tessellon {
namespace {

class LauncherTest : public EngineTest {
  protected:
    LauncherTest() {
        defaults_.setDouble(preference::gap, 0);
        defaults_.setDouble(preference::padding, 0);
    }

    KeyPanelState& panel() { return *views.states.back(); }
    std::size_t panelsMade() const { return views.states.size(); }

    /// Types a key as the desktop would; notUsed when it goes on to the search field.
    KeyVerdict type(const KeyEvent& event) { return desktop_.eventMonitors().type(event); }
    KeyVerdict key(std::uint32_t code) {
        KeyEvent event;
        event.keyCode = code;
        return type(event);
    }
    KeyVerdict letter(std::string text, std::uint64_t modifiers = 0) {
        KeyEvent event;
        event.modifiers = modifiers;
        event.characters = text;
        event.charactersIgnoringModifiers = std::move(text);
        return type(event);
    }

    static constexpr Rect half{0, 25, 960, 1055};

    FakeLauncherViews views;
    MemoryBeep beep;
    NotificationCenter notifications;
    Launcher launcher{engine(), views, beep, notifications};
};

TEST_F(LauncherTest, OpensCentredOnTheVisibleAreaOfTheWindowsDisplay) {
    desktop_.setScreens({screen(1, {0, 0, 1920, 1080}, {0, 0, 1920, 1055}),
                         screen(2, {1920, 0, 1280, 1024}, {1920, 40, 1280, 984})});
    openFocused({2000, 300, 800, 600});
    std::vector<std::string> events;
    const auto observer = notifications.observe(
        notification::tourEvent, [&](const NotificationCenter::Object& object) {
            events.push_back(std::any_cast<std::string>(object));
            EXPECT_TRUE(panel().key) << "told when it is there";
        });
    launcher.toggle();

    ASSERT_TRUE(launcher.isOpen());
    EXPECT_TRUE(panel().key);
    EXPECT_EQ(panel().frame, (Rect{2560 - 236, 532 - 316, 472, 632}));
    EXPECT_EQ(views.areas.back(), (Rect{1920, 40, 1280, 984}));
    EXPECT_EQ(launcher.model()->appName(), "App 100");
    EXPECT_EQ(events, std::vector<std::string>{"launcher"});
    EXPECT_TRUE(desktop_.activations().empty()) << "nobody's place in front is taken";
    EXPECT_EQ(beep.count(), 0);
}

TEST_F(LauncherTest, KeepsItsSearchFieldInSightWhereItHasNoRoom) {
    openFocused({0, 0, 800, 600});
    const auto placeOn = [&](const Rect& visible) {
        desktop_.setScreens({screen(1, {0, 0, 800, 800}, visible)});
        launcher.toggle();
        const auto frame = panel().frame;
        launcher.toggle();
        return frame;
    };
    EXPECT_EQ(placeOn({0, 40, 800, 600}), (Rect{164, 640 - 632, 472, 632})) << "too low";
    EXPECT_EQ(placeOn({60, 0, 400, 700}), (Rect{60, 34, 472, 632})) << "too narrow";
}

TEST_F(LauncherTest, OpensWithoutScreensAndWithoutAName) {
    desktop_.launch({300, std::nullopt, "", ActivationPolicy::regular, /*hidden=*/false});
    desktop_.focus(open(300, {0, 0, 800, 600}));
    desktop_.setScreens({});
    launcher.toggle();
    ASSERT_TRUE(launcher.isOpen());
    EXPECT_EQ(launcher.model()->appName(), "Window");
    EXPECT_EQ(panel().frame, (Rect{-236, -316, 472, 632}));
}

TEST_F(LauncherTest, BeepsWhenThereIsNothingToSnap) {
    desktop_.setFrontmost(std::nullopt);
    launcher.toggle();
    EXPECT_EQ(beep.count(), 1) << "no application in front";

    desktop_.setFrontmost(editor);
    launcher.toggle();
    EXPECT_EQ(beep.count(), 2) << "no focused window";

    const auto window = openFocused({0, 0, 800, 600});
    at(window).answersInstead[Attribute::size] = std::nullopt;
    launcher.toggle();
    EXPECT_EQ(beep.count(), 3) << "no frame";
    at(window).answersInstead.clear();

    defaults_.setBool(preference::paused, true);
    launcher.toggle();
    EXPECT_EQ(beep.count(), 4) << "paused";
    EXPECT_EQ(panelsMade(), 0U);

    defaults_.setBool(preference::paused, false);
    launcher.toggle();
    EXPECT_TRUE(launcher.isOpen());
    defaults_.setBool(preference::paused, true);
    launcher.toggle();
    EXPECT_FALSE(launcher.isOpen()) << "an open one closes even then";
    EXPECT_EQ(beep.count(), 4);
}

TEST_F(LauncherTest, ClosesByItsChordAndByEscapeAndBringsThePreviousApplicationBack) {
    openFocused({0, 0, 800, 600});
    launcher.toggle();
    launcher.model()->setQuery("half");
    launcher.toggle();
    EXPECT_FALSE(launcher.isOpen());
    EXPECT_EQ(launcher.model(), nullptr);
    EXPECT_FALSE(panel().exists);
    EXPECT_EQ(panel().orderedOut, 1);
    EXPECT_EQ(desktop_.eventMonitors().keyMonitorCount(), 0U);
    EXPECT_EQ(desktop_.activations(), std::vector<Pid>{editor});

    launcher.toggle();
    EXPECT_EQ(launcher.model()->query(), "") << "nothing survives a close";
    EXPECT_EQ(key(virtual_key::escape), KeyVerdict::used);
    EXPECT_FALSE(launcher.isOpen());
    EXPECT_EQ(desktop_.activations(), (std::vector<Pid>{editor, editor}));

    launcher.close(Launcher::Activation::previousApplication);
    EXPECT_EQ(desktop_.activations().size(), 2U) << "a closed one stays as it is";
}

TEST_F(LauncherTest, LosingTheKeyboardClosesItAndActivatesNobody) {
    openFocused({0, 0, 800, 600});
    launcher.toggle();
    views.panel->resignKey();
    EXPECT_FALSE(launcher.isOpen());
    EXPECT_FALSE(panel().exists);
    EXPECT_TRUE(desktop_.activations().empty());
}

TEST_F(LauncherTest, AnActionGoesToTheWindowThatHadTheKeyboardAtOpening) {
    const auto window = openFocused({100, 100, 800, 600});
    const auto other = open(browser, {300, 300, 700, 500});
    launcher.toggle();
    desktop_.focus(other);
    launcher.model()->setQuery("left");
    EXPECT_EQ(key(virtual_key::returnKey), KeyVerdict::used);

    EXPECT_FALSE(launcher.isOpen());
    EXPECT_EQ(desktop_.activations(), std::vector<Pid>{editor});
    EXPECT_EQ(at(window).frame, half);
    EXPECT_EQ(at(other).frame, (Rect{300, 300, 700, 500}));
}

TEST_F(LauncherTest, AnActionOnAWindowThatIsGoneClosesAllTheSame) {
    const auto window = openFocused({100, 100, 800, 600});
    launcher.toggle();
    desktop_.close(window);
    key(virtual_key::keypadEnter);
    EXPECT_FALSE(launcher.isOpen());
    EXPECT_EQ(desktop_.activations(), std::vector<Pid>{editor});
}

TEST_F(LauncherTest, ReturnWithoutMatchesBeepsAndStaysOpen) {
    openFocused({0, 0, 800, 600});
    launcher.toggle();
    launcher.model()->setQuery("xyz");
    EXPECT_EQ(key(virtual_key::returnKey), KeyVerdict::used);
    EXPECT_EQ(beep.count(), 1);
    EXPECT_TRUE(launcher.isOpen());
}

TEST_F(LauncherTest, ArrowsMoveTheSelection) {
    openFocused({0, 0, 800, 600});
    launcher.toggle();
    const auto after = [&](std::uint32_t code) {
        EXPECT_EQ(key(code), KeyVerdict::used);
        return launcher.model()->selection();
    };
    EXPECT_EQ(after(virtual_key::downArrow), 4);
    EXPECT_EQ(after(virtual_key::rightArrow), 5);
    EXPECT_EQ(after(virtual_key::upArrow), 1);
    EXPECT_EQ(after(virtual_key::leftArrow), 0);
}

TEST_F(LauncherTest, LettersRunTheirActionsWhileNothingIsTyped) {
    const auto window = openFocused({100, 100, 800, 600});
    launcher.toggle();
    EXPECT_EQ(letter("x"), KeyVerdict::notUsed) << "no action's letter";
    EXPECT_EQ(letter("c", modifier_flag::command), KeyVerdict::notUsed);
    EXPECT_EQ(letter("u", modifier_flag::option), KeyVerdict::notUsed);
    EXPECT_EQ(letter("u", modifier_flag::control), KeyVerdict::notUsed);
    EXPECT_EQ(letter(""), KeyVerdict::notUsed);
    EXPECT_EQ(letter("←"), KeyVerdict::notUsed) << "arrows are no letters";
    launcher.model()->setQuery(" ");
    EXPECT_EQ(letter("u"), KeyVerdict::notUsed) << "a space is a query";
    launcher.model()->setQuery("");
    ASSERT_TRUE(launcher.isOpen());

    EXPECT_EQ(letter("u"), KeyVerdict::used);
    EXPECT_FALSE(launcher.isOpen());
    EXPECT_EQ(at(window).frame, (Rect{0, 25, 960, 528}));

    launcher.toggle();
    EXPECT_EQ(letter("D", modifier_flag::shift), KeyVerdict::used);
    EXPECT_EQ(at(window).frame, (Rect{0, 25, 640, 1055}));
    EXPECT_EQ(letter("u"), KeyVerdict::notUsed) << "nobody listens any more";
}

TEST_F(LauncherTest, TheLettersAreThoseOfTheDefaults) {
    std::string letters;
    for (const auto action : allSnapActions) {
        letters += launcherLetter(action).empty() ? "-" : launcherLetter(action);
    }
    EXPECT_EQ(letters, "----UIJKDFGET--C---");
}

}  // namespace
}  // namespace tessellon
