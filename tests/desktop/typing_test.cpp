// Who gets what is typed around the chord and the keyboard's change of hands, key by key.
#include "input_fixture.h"
#include "launcher/right_command_slash.h"

#include <optional>
#include <string>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr auto rightAlt = static_cast<Key>(108);

class TypingTest : public InputTest {
  protected:
    /// Whether the program in front got exactly these taps since the log was cleared.
    bool gotTaps(const std::vector<Key>& keys) {
        for (const Key key : keys) {
            if (log->story(static_cast<std::uint8_t>(key)) != "+-") {
                return false;
            }
        }
        return true;
    }
};

TEST_P(TypingTest, theProgramInFrontSeesItsKeysAsIfNobodyListened) {
    begin();
    auto& keyboard = desktop().keyboard();
    const auto transcript = [&] {
        log->clear();
        for (const auto lock :
             {std::optional<Key>{}, std::optional(Key::capsLock), std::optional(Key::numLock)}) {
            if (lock) {
                keyboard.tap(*lock);
            }
            for (const auto& held :
                 {std::vector<Key>{}, std::vector{Key::leftSuper}, std::vector{Key::leftShift},
                  std::vector{Key::leftControl, Key::leftSuper},
                  std::vector{Key::leftSuper, Key::leftAlt},
                  std::vector{Key::rightSuper, Key::leftShift}}) {
                keyboard.combinationThenTyped(held, Key::slash, {Key::a, Key::slash});
                settle();
            }
        }
        keyboard.tap(Key::capsLock);
        keyboard.tap(Key::numLock);
        settle();
        return log->transcript();
    };
    const auto undisturbed = transcript();
    int triggers = 0;
    RightCommandSlash chord(real->eventTaps(), [&] { ++triggers; });
    chord.start();
    EXPECT_EQ(transcript(), undisturbed);
    EXPECT_EQ(triggers, 0);
}

TEST_P(TypingTest, whatFollowsTheKeyThatClosesIsForTheProgramInFront) {
    begin();
    std::string typed;
    std::optional<Token> focus;
    const KeyboardFocus::Receiver receiver{.key =
                                               [&](const TypedKey& key) {
                                                   if (key.transition != KeyTransition::pressed) {
                                                       return;
                                                   }
                                                   if (key.event.keyCode == virtual_key::escape) {
                                                       focus.reset();
                                                   } else {
                                                       typed += key.event.characters;
                                                   }
                                               },
                                           .lost = {}};
    for (int round = 0; round < 5; ++round) {
        typed.clear();
        log->clear();
        focus = real->keyboardFocus().take({}, receiver);
        desktop().keyboard().combinationThenTyped({Key::a}, Key::escape,
                                                  {Key::t, Key::h, Key::i, Key::r, Key::d});
        EXPECT_TRUE(comes([&] {
            return gotTaps({Key::t, Key::h, Key::i, Key::r, Key::d});
        })) << log->transcript();
        EXPECT_FALSE(focus);
        EXPECT_EQ(typed, "a");
        EXPECT_EQ(log->story(static_cast<std::uint8_t>(Key::escape)), "");
    }
}

INSTANTIATE_TEST_SUITE_P(On, TypingTest, testedWindowManagers(), windowManagerName);

class OpenboxTypingTest : public TypingTest {};

TEST_P(OpenboxTypingTest, theChordThatClosesMayBeHeld) {
    begin();
    desktop().run({"xset", "r", "rate", "50", "50"});
    int repeats = 0;
    std::optional<Token> focus;
    const auto tap =
        real->eventTaps().create(virtual_key::slash, modifier_flag::command,
                                 {.keyDown =
                                      [&](const TappedKey& key) {
                                          if (key.isAutorepeat) {
                                              ++repeats;
                                          } else if (focus) {
                                              focus.reset();
                                          } else {
                                              focus = real->keyboardFocus().take(
                                                  {}, {.key = [](const TypedKey&) {}, .lost = {}});
                                          }
                                          return TapVerdict::swallow;
                                      },
                                  .disabled = {}});
    auto& keyboard = desktop().keyboard();
    keyboard.combination({Key::rightSuper}, Key::slash);
    EXPECT_TRUE(comes([&] { return focus.has_value(); }));
    log->clear();
    keyboard.press(Key::rightSuper);
    keyboard.press(Key::slash);
    EXPECT_TRUE(comes([&] { return !focus && repeats >= 4; }));
    desktop().run({"xset", "r", "off"});
    keyboard.tap(Key::x);
    EXPECT_TRUE(comes([&] { return gotTaps({Key::x}); })) << log->transcript();
    keyboard.release(Key::slash);
    keyboard.release(Key::rightSuper);
    settle();
    EXPECT_EQ(log->presses(), (std::vector<std::uint8_t>{static_cast<std::uint8_t>(Key::x),
                                                         static_cast<std::uint8_t>(Key::g)}));
    EXPECT_FALSE(focus);
}

TEST_P(OpenboxTypingTest, aChordThatMeetsTheEndOfATypingKeepsNothing) {
    begin();
    const KeyboardFocus::Receiver receiver{.key = [](const TypedKey&) {}, .lost = {}};
    int chords = 0;
    std::optional<Token> focus;
    const auto tap = real->eventTaps().create(virtual_key::slash, modifier_flag::command,
                                              {.keyDown =
                                                   [&](const TappedKey&) {
                                                       ++chords;
                                                       focus =
                                                           real->keyboardFocus().take({}, receiver);
                                                       return TapVerdict::swallow;
                                                   },
                                               .disabled = {}});
    focus = real->keyboardFocus().take({}, receiver);
    // By the time that we hear of the chord, it is over, and its last part was for nobody.
    desktop().keyboard().combination({Key::rightSuper}, Key::slash);
    focus.reset();
    ASSERT_TRUE(comes([&] { return chords == 1; }));
    focus.reset();
    EXPECT_TRUE(comes([&] { return desktop().keyboard().grab(); })) << "the keyboard is held";
    desktop().keyboard().ungrab();
}

TEST_P(OpenboxTypingTest, aLayoutThatIsSetMeanwhileCounts) {
    begin();
    std::string typed;
    const auto focus =
        real->keyboardFocus().take({}, {.key =
                                            [&](const TypedKey& key) {
                                                if (key.transition == KeyTransition::pressed) {
                                                    typed += key.event.characters;
                                                }
                                            },
                                        .lost = {}});
    desktop().keyboard().tap(Key::y);
    EXPECT_TRUE(comes([&] { return typed == "y"; }));
    desktop().run({"setxkbmap", "-layout", "de"});
    real->serve();
    desktop().keyboard().tap(Key::y);
    EXPECT_TRUE(comes([&] { return typed.size() == 2; }));
    EXPECT_EQ(typed, "yz");
}

TEST_P(OpenboxTypingTest, keysTellOfTheirLayoutAndItsLevels) {
    begin();
    std::vector<KeyEvent> events;
    const auto focus =
        real->keyboardFocus().take({}, {.key =
                                            [&](const TypedKey& key) {
                                                if (key.transition == KeyTransition::pressed &&
                                                    key.event.keyCode == virtual_key::q) {
                                                    events.push_back(key.event);
                                                }
                                            },
                                        .lost = {}});
    const auto typed = [&](const std::vector<Key>& held) {
        events.clear();
        desktop().keyboard().combination(held, Key::q);
        EXPECT_TRUE(comes([&] { return !events.empty(); }));
        return events.empty() ? KeyEvent{} : events.back();
    };
    const auto setLayout = [&](const std::vector<std::string>& layout) {
        std::vector<std::string> command{"setxkbmap", "-option", "", "-layout"};
        command.insert(command.end(), layout.begin(), layout.end());
        desktop().run(command);
        real->serve();
    };
    using Layout = std::vector<std::string>;
    for (const auto& latin : {Layout{"us"}, Layout{"us", "-variant", "dvorak"}, Layout{"de"},
                              Layout{"fr"}, Layout{"fr", "-variant", "bepo"}, Layout{"az"}}) {
        setLayout(latin);
        EXPECT_TRUE(typed({}).layoutIsLatin) << latin.front();
        EXPECT_TRUE(typed({Key::leftShift, Key::leftSuper}).layoutIsLatin) << latin.front();
    }
    for (const auto* other : {"il", "gr", "bg", "ru", "epo"}) {
        setLayout({other});
        EXPECT_FALSE(typed({}).layoutIsLatin) << other;
        EXPECT_FALSE(typed({Key::leftShift, Key::leftSuper}).layoutIsLatin) << other;
    }
    setLayout({"us,gr", "-option", "grp:caps_toggle"});
    EXPECT_EQ(typed({}).charactersIgnoringModifiers, "q");
    desktop().keyboard().tap(Key::capsLock);
    EXPECT_EQ(typed({}).charactersIgnoringModifiers, ";");
    EXPECT_FALSE(typed({}).layoutIsLatin);
    desktop().keyboard().tap(Key::capsLock);
    EXPECT_TRUE(typed({}).layoutIsLatin);

    EXPECT_FALSE(typed({rightAlt}).isOnFurtherLevel) << "an Alt as any other";
    setLayout({"de"});
    EXPECT_FALSE(typed({Key::leftAlt}).isOnFurtherLevel);
    const auto withAltGr = typed({Key::leftControl, rightAlt});
    EXPECT_TRUE(withAltGr.isOnFurtherLevel);
    EXPECT_EQ(withAltGr.modifiers, modifier_flag::control);
    EXPECT_EQ(withAltGr.charactersIgnoringModifiers, "q");
}

TEST_P(OpenboxTypingTest, anyOtherWindowThatBecomesActiveTakesTheKeyboard) {
    begin();
    auto& x = desktop().x();
    const auto announce = [&](xcb_window_t window) {
        x.setValues(x.root(), "_NET_ACTIVE_WINDOW", "WINDOW", {window});
        x.sync();
    };
    for (const auto first : {log->window(), xcb_window_t{XCB_WINDOW_NONE}}) {
        announce(first);
        int keys = 0;
        bool lost = false;
        const auto focus = real->keyboardFocus().take(
            {}, {.key = [&](const TypedKey&) { ++keys; }, .lost = [&] { lost = true; }});
        announce(XCB_WINDOW_NONE);
        announce(first);
        desktop().keyboard().tap(Key::a);
        EXPECT_TRUE(comes([&] { return keys == 2; })) << "none for a moment";
        EXPECT_FALSE(lost);
        announce(first == log->window() ? x.root() : log->window());
        EXPECT_TRUE(comes([&] { return lost; }));
    }
}

INSTANTIATE_TEST_SUITE_P(On, OpenboxTypingTest, ::testing::Values("openbox"), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
