// The hands as the program's own adapters see them: a key tapped and kept from the program in
// front, the keyboard taken without the focus, drags watched while a window manager does them.
#include "input_fixture.h"
#include "launcher/right_command_slash.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tessellon::desktop {
namespace {

TEST_P(InputTest, theChordIsKeptAndItsNeighboursArrive) {
    begin();
    int triggers = 0;
    RightCommandSlash chord(real->eventTaps(), [&] { ++triggers; });
    chord.start();
    auto& keyboard = desktop().keyboard();
    const std::vector<std::vector<Key>> neighbours{{},
                                                   {Key::leftSuper},
                                                   {Key::rightSuper, Key::leftShift},
                                                   {Key::rightSuper, Key::leftAlt},
                                                   {Key::rightSuper, Key::leftControl}};
    int expected = 0;
    for (const auto lock :
         {std::optional<Key>{}, std::optional(Key::capsLock), std::optional(Key::numLock)}) {
        if (lock) {
            keyboard.tap(*lock);
        }
        for (const auto& held :
             {std::vector{Key::rightSuper}, std::vector{Key::leftSuper, Key::rightSuper}}) {
            log->clear();
            keyboard.combination(held, Key::slash);
            ++expected;
            EXPECT_TRUE(comes([&] { return triggers == expected; }));
            settle();
            EXPECT_EQ(log->story(slashCode), "") << "not even its release";
            EXPECT_EQ(triggers, expected);
        }
        for (const auto& held : neighbours) {
            log->clear();
            keyboard.combination(held, Key::slash);
            EXPECT_TRUE(comes([&] { return log->story(slashCode) == "+-"; }))
                << held.size() << " held: " << log->story(slashCode);
            settle();
            EXPECT_EQ(log->story(slashCode), "+-");
        }
        EXPECT_EQ(triggers, expected);
    }
    chord.stop();
    log->clear();
    keyboard.combination({Key::rightSuper}, Key::slash);
    EXPECT_TRUE(comes([&] { return log->story(slashCode) == "+-"; }));
}

// Opens at the first chord, closes at the next, as the launcher does.
TEST_P(InputTest, whatIsTypedAfterTheChordIsForUsUntilTheNextChord) {
    begin();
    std::string typed;
    bool lost = false;
    std::optional<Token> focus;
    RightCommandSlash chord(real->eventTaps(), [&] {
        if (focus) {
            focus.reset();
            return;
        }
        focus = real->keyboardFocus().take({800, 400, 300, 200},
                                           {.key =
                                                [&](const TypedKey& key) {
                                                    if (key.transition == KeyTransition::pressed) {
                                                        typed += key.event.characters;
                                                    }
                                                },
                                            .lost = [&] { lost = true; }});
    });
    chord.start();
    auto& keyboard = desktop().keyboard();
    for (int round = 0; round < 3; ++round) {
        typed.clear();
        log->clear();
        keyboard.combinationThenTyped({Key::rightSuper}, Key::slash,
                                      {Key::t, Key::h, Key::i, Key::r, Key::d});
        EXPECT_TRUE(comes([&] { return typed == "third"; })) << typed;
        EXPECT_EQ(log->story(static_cast<std::uint8_t>(Key::t)), "");
        EXPECT_EQ(desktop().windows().active(), log->window());
        EXPECT_TRUE(log->isFocused());
        EXPECT_FALSE(lost);
        keyboard.combination({Key::rightSuper}, Key::slash);
        EXPECT_TRUE(comes([&] { return !focus; }));
        settle();
        EXPECT_EQ(log->story(slashCode), "");
    }
    // The second press of a key that is still down is nobody else's.
    keyboard.combination({Key::rightSuper}, Key::slash);
    EXPECT_TRUE(comes([&] { return focus.has_value(); }));
    keyboard.press(Key::enter);
    EXPECT_TRUE(comes([&] { return typed.back() == '\r'; }));
    log->clear();
    focus.reset();
    keyboard.release(Key::enter);
    settle();
    EXPECT_EQ(log->story(static_cast<std::uint8_t>(Key::enter)), "");
}

INSTANTIATE_TEST_SUITE_P(On, InputTest, testedWindowManagers(), windowManagerName);

class OpenboxInputTest : public InputTest {};

TEST_P(OpenboxInputTest, aHeldChordTriggersOnce) {
    begin();
    // Milliseconds until it repeats: soon, and so late that it might pass for another press.
    for (const char* delay : {"50", "2200"}) {
        desktop().run({"xset", "r", "rate", delay, "50"});
        int presses = 0;
        int repeats = 0;
        const auto tap = real->eventTaps().create(virtual_key::slash, modifier_flag::command,
                                                  {.keyDown =
                                                       [&](const TappedKey& key) {
                                                           ++(key.isAutorepeat ? repeats : presses);
                                                           return TapVerdict::swallow;
                                                       },
                                                   .disabled = {}});
        ASSERT_TRUE(tap);
        auto& keyboard = desktop().keyboard();
        keyboard.press(Key::rightSuper);
        keyboard.press(Key::slash);
        EXPECT_TRUE(comes([&] { return presses + repeats >= 5; })) << delay;
        keyboard.release(Key::slash);
        keyboard.release(Key::rightSuper);
        settle();
        EXPECT_EQ(presses, 1) << delay;
        EXPECT_EQ(log->story(slashCode), "") << delay;
    }
}

TEST_P(OpenboxInputTest, aHeldCombinationIsRefused) {
    begin();
    const auto create = [&] {
        return real->eventTaps().create(
            virtual_key::slash, modifier_flag::command,
            {.keyDown = [](const TappedKey&) { return TapVerdict::pass; }, .disabled = {}});
    };
    auto& x = desktop().x();
    xcb_grab_key(x.connection(), 0, x.root(), XCB_MOD_MASK_4, slashCode, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    x.sync();
    EXPECT_FALSE(create());
    xcb_ungrab_key(x.connection(), slashCode, x.root(), XCB_MOD_MASK_4);
    x.sync();
    EXPECT_TRUE(create());
}

TEST_P(OpenboxInputTest, anotherLayoutMovesLettersButNotTheChord) {
    begin();
    desktop().run({"setxkbmap", "-layout", "us,de", "-option", "grp:caps_toggle"});
    auto& keyboard = desktop().keyboard();
    std::string typed;
    std::optional<Token> focus;
    RightCommandSlash chord(real->eventTaps(), [&] {
        focus = real->keyboardFocus().take(
            {}, {.key = [&](const TypedKey& key) { typed += key.event.characters; }, .lost = {}});
    });
    chord.start();
    settle();
    keyboard.tap(Key::capsLock);
    keyboard.combinationThenTyped({Key::rightSuper}, Key::slash, {Key::slash, Key::d});
    EXPECT_TRUE(comes([&] { return typed == "-d"; })) << typed;
    // The key right of P is ü there; the one left of Backspace is a dead acute accent.
    constexpr auto rightOfP = static_cast<Key>(34);
    constexpr auto leftOfBackspace = static_cast<Key>(21);
    typed.clear();
    keyboard.tap(rightOfP);
    keyboard.tap(leftOfBackspace);
    keyboard.tap(Key::e);
    EXPECT_TRUE(comes([&] { return typed == "üé"; })) << typed;
}

TEST_P(OpenboxInputTest, hotKeysAndLocalMonitorsComeBeforeThePanel) {
    begin();
    int hotKeys = 0;
    const auto handler = real->hotKeyCenter().installHandler([&](const auto&) {
        ++hotKeys;
        return HotKeyEventStatus::handled;
    });
    constexpr std::uint32_t keyU = 32;
    const auto hotKey = real->hotKeyCenter().registerHotKey(
        keyU, hot_key_modifier::control | hot_key_modifier::option, {1, 1});
    ASSERT_TRUE(hotKey);
    const auto monitor = real->eventMonitors().addLocalKeyMonitor([&](const KeyEvent& event) {
        return event.keyCode == virtual_key::leftArrow ? KeyVerdict::used : KeyVerdict::notUsed;
    });
    std::vector<std::uint32_t> given;
    bool lost = false;
    const auto focus = real->keyboardFocus().take(
        {1000, 400, 300, 200},
        {.key =
             [&](const TypedKey& key) {
                 if (key.transition == KeyTransition::pressed && key.event.keyCode < 123) {
                     given.push_back(key.event.keyCode);
                 }
             },
         .lost = [&] { lost = true; }});
    auto& keyboard = desktop().keyboard();
    keyboard.combination(Held::controlAlt, Key::u);
    keyboard.tap(Key::left);
    keyboard.tap(Key::d);
    constexpr std::uint32_t keyControl = 59;
    constexpr std::uint32_t keyOption = 58;
    constexpr std::uint32_t keyD = 2;
    EXPECT_TRUE(comes([&] { return !given.empty() && given.back() == keyD; }));
    EXPECT_EQ(given, (std::vector<std::uint32_t>{keyControl, keyOption, keyD}));
    EXPECT_EQ(hotKeys, 1);
    // A click on the panel keeps the keyboard, one elsewhere does not. The panel's frame is
    // measured from the bottom of the screen.
    desktop().pointer().jumpTo({1100, 1080 - 500});
    desktop().pointer().click();
    keyboard.tap(Key::d);
    EXPECT_TRUE(comes([&] { return given.size() == 4; }));
    EXPECT_FALSE(lost);
    desktop().pointer().jumpTo({1100, 800});
    desktop().pointer().click();
    EXPECT_TRUE(comes([&] { return lost; }));
    desktop().windows().activate(log->window());  // the click was on the bare desktop
    settle();
}

TEST_P(OpenboxInputTest, anotherActiveWindowOrAHolderOfTheKeyboardLosesIt) {
    begin();
    int losses = 0;
    const auto take = [&] {
        return real->keyboardFocus().take({}, {.key = {}, .lost = [&] { ++losses; }});
    };
    const xcb_window_t clock = startClock({900, 300, 400, 300});
    desktop().windows().activate(clock);
    auto focus = take();
    desktop().windows().activate(log->window());
    EXPECT_TRUE(comes([&] { return losses == 1; }));
    settle();
    ASSERT_TRUE(desktop().keyboard().grab());
    focus = take();
    EXPECT_EQ(losses, 1);
    EXPECT_TRUE(comes([&] { return losses == 2; }));
    desktop().keyboard().ungrab();
    settle();
}

TEST_P(OpenboxInputTest, aDragOfTheWindowManagersIsWatched) {
    begin();
    const xcb_window_t clock = startClock({900, 300, 400, 300});
    auto& monitors = real->eventMonitors();
    int drags = 0;
    int ups = 0;
    int localUps = 0;
    std::uint64_t flags = 0;
    bool downInDrags = true;
    bool upInUps = true;
    const auto onDrag = monitors.addGlobalMonitor(MonitoredEvent::leftMouseDragged, [&] {
        ++drags;
        downInDrags = downInDrags && monitors.pressedMouseButtons() == 1;
    });
    const auto onUp = monitors.addGlobalMonitor(MonitoredEvent::leftMouseUp, [&] {
        ++ups;
        upInUps = upInUps && monitors.pressedMouseButtons() == 0;
    });
    const auto onLocalUp =
        monitors.addLocalMonitor(MonitoredEvent::leftMouseUp, [&] { ++localUps; });
    const auto onFlags = monitors.addGlobalMonitor(MonitoredEvent::flagsChanged,
                                                   [&] { flags = monitors.modifierFlags(); });
    auto& pointer = desktop().pointer();
    pointer.moveTo({1100, 305});
    EXPECT_TRUE(comes([&] { return drags == 0; }));
    pointer.press();
    EXPECT_TRUE(comes([&] { return monitors.pressedMouseButtons() == 1; }));
    // At the speed of a hand: the window manager is with it at every step.
    for (int step = 0; step <= 10; ++step) {
        pointer.jumpTo({1100 + 10 * step, 305 + 10 * step});
        EXPECT_TRUE(comes([&] { return desktop().x().windowManagerServes(); }));
    }
    EXPECT_TRUE(comes([&] { return drags > 0; }));
    desktop().keyboard().press(Key::rightSuper);
    EXPECT_TRUE(
        comes([&] { return flags == (modifier_flag::command | modifier_flag::rightCommand); }));
    desktop().keyboard().release(Key::rightSuper);
    EXPECT_TRUE(comes([&] { return flags == 0; }));
    pointer.release();
    EXPECT_TRUE(comes([&] { return ups == 1; }));
    EXPECT_TRUE(downInDrags);
    EXPECT_TRUE(upInUps);
    EXPECT_EQ(localUps, 0);
    const Frame moved{1000, 400, 400, 300};
    EXPECT_EQ(desktop().windows().settle(clock, moved), moved);
    const auto location = monitors.pointerLocation();
    ASSERT_TRUE(location);
    EXPECT_EQ(location->y, 1080 - 405);

    // The log is a window of this process.
    const Frame logFrame{200, 200, 400, 300};
    ASSERT_EQ(desktop().windows().place(log->window(), logFrame), logFrame);
    drags = 0;
    pointer.moveTo({400, 350});
    pointer.press();
    EXPECT_TRUE(comes([&] { return monitors.pressedMouseButtons() == 1; }));
    pointer.moveTo({450, 400});
    pointer.release();
    EXPECT_TRUE(comes([&] { return localUps == 1; }));
    EXPECT_EQ(drags, 0);
    EXPECT_EQ(ups, 1);
}

INSTANTIATE_TEST_SUITE_P(On, OpenboxInputTest, ::testing::Values("openbox"), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
