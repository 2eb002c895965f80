// Recording shortcuts with real keys: a window with the program's own controls on its own adapters,
// driven from outside and judged by its settings file.
#include "desktop_fixture.h"
#include "harness/key_log.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr auto hint = "Add ⌃, ⌥ or ⌘ so it doesn't clash with typing.";
constexpr auto pausedStatus = "Recording… shortcuts are paused for a moment.";

constexpr auto keypadOne = static_cast<Key>(87);
constexpr auto keyOfOneAndAHalf = static_cast<Key>(49);  // left of the digit 1
constexpr auto tab = static_cast<Key>(23);
constexpr auto space = static_cast<Key>(65);
constexpr auto mute = static_cast<Key>(121);
constexpr auto rightAlt = static_cast<Key>(108);

constexpr int firstUnnamed = 256;
constexpr int control = 0x40000;
constexpr int option = 0x80000;
constexpr int command = 0x100000;

struct Stored {
    int keyCode = 0;
    int mods = 0;
    std::string key;
    bool operator==(const Stored&) const = default;
};

class RecorderTest : public WindowManagerTest {
  protected:
    void begin(WindowManagerKeys keys = WindowManagerKeys::released) {
        useDesktop(Monitors::one, keys);
        programMayBeGone();
        startRecorder();
    }
    void startRecorder() {
        window = desktop().startWithWindow({TESSELLON_RECORDER_WINDOW_PATH, report()});
        desktop().windows().place(window, {600, 300, 500, 400});
        desktop().windows().activate(window);
        EXPECT_TRUE(waitUntil([&] { return says("key", placed); })) << state()["key"];
        // Window managers keep some of them.
        EXPECT_TRUE(waitUntil([&] { return state()["status"].starts_with("1"); }));
    }

    std::filesystem::path report() { return desktop().home() / "recorder.state"; }
    /// The lines of the report by their first word.
    std::map<std::string, std::string> state() {
        std::map<std::string, std::string> lines;
        std::istringstream text(fileContents(report()));
        for (std::string line; std::getline(text, line);) {
            const auto end = line.find(' ');
            lines[line.substr(0, end)] = end == std::string::npos ? "" : line.substr(end + 1);
        }
        return lines;
    }
    bool says(const std::string& word, const std::string& rest) { return state()[word] == rest; }

    void click(const std::string& target) {
        std::istringstream place(state()["snap." + target]);
        Position at;
        place >> at.x >> at.y;
        desktop().pointer().moveTo(at);
        desktop().pointer().click();
    }
    /// Begins a recording by a click. Throws when it does not begin.
    void record(const std::string& target) {
        click(target);
        awaitRecording(target);
    }
    bool isRecording(const std::string& target) {
        return says("recording", "snap." + target) && keyboardIsTaken();
    }
    void awaitRecording(const std::string& target) {
        if (!waitUntil([&] { return isRecording(target); })) {
            throw std::runtime_error("no recording of " + target + " begins:\n" +
                                     fileContents(report()));
        }
    }
    bool keyboardIsTaken() {
        const bool given = desktop().keyboard().grab();
        if (given) {
            desktop().keyboard().ungrab();
        }
        return !given;
    }
    /// Once a recording is over, its keys are up, and the shortcuts work again.
    bool isIdle() {
        return waitUntil([&] {
            return says("recording", "") && !says("status", pausedStatus) && !keyboardIsTaken();
        });
    }

    nlohmann::json keymap() {
        const auto settings = readSettings(program().settingsFile()).value_or(StoredValues{});
        const auto found = settings.find("keymap");
        return found == settings.end()
                   ? nlohmann::json::object()
                   : nlohmann::json::parse(std::get<StoredData>(found->second).bytes);
    }
    Stored stored(const std::string& target) {
        const auto all = keymap();
        const auto entry = all.find("snap." + target);
        if (entry == all.end()) {
            return {};
        }
        return {entry->at("keyCode").get<int>(), entry->at("mods").get<int>(),
                entry->at("key").get<std::string>()};
    }
    /// What the settings say in the end.
    Stored settled(const std::string& target, const Stored& expected) {
        waitUntil([&] { return stored(target) == expected; });
        return stored(target);
    }
    /// Records a combination and gives what is stored for it.
    Stored afterRecording(const std::string& target, const std::vector<Key>& held, Key key,
                          const Stored& expected) {
        record(target);
        desktop().keyboard().combination(held, key);
        EXPECT_TRUE(isIdle());
        return settled(target, expected);
    }

    /// The frame that the window gets, from the bottom left of the screen.
    static constexpr auto placed = "600 380 500 400";
    xcb_window_t window = XCB_WINDOW_NONE;
    const std::vector<Key> controlAlt{Key::leftControl, Key::leftAlt};
    const Stored cleared{-1, 0, ""};
};

std::ostream& operator<<(std::ostream& out, const Stored& value) {
    return out << value.keyCode << " with " << value.mods << ": " << value.key;
}

TEST_P(RecorderTest, whatIsRecordedIsAShortcutFromThenOn) {
    begin();
    auto& keyboard = desktop().keyboard();
    record("leftHalf");
    EXPECT_TRUE(says("status", pausedStatus));
    keyboard.tap(Key::h);
    EXPECT_TRUE(waitUntil([&] { return says("note", hint); }));
    EXPECT_TRUE(says("recording", "snap.leftHalf"));
    keyboard.combination({Key::leftShift}, Key::backspace);
    keyboard.combination(controlAlt, Key::h);
    EXPECT_TRUE(isIdle());
    const Stored controlOptionH{4, control | option, "H"};
    EXPECT_EQ(settled("leftHalf", controlOptionH), controlOptionH);
    EXPECT_TRUE(says("note", ""));
    EXPECT_TRUE(says("active", "yes"));
    EXPECT_TRUE(says("heard", "")) << state()["heard"];

    keyboard.combination(controlAlt, Key::h);
    EXPECT_TRUE(waitUntil([&] { return says("fired", "snap.leftHalf "); }));
    keyboard.combination(controlAlt, Key::left);
    keyboard.tap(Key::g);
    EXPECT_TRUE(waitUntil([&] { return state()["heard"].ends_with("+42 -42 "); }));
    EXPECT_TRUE(says("fired", "snap.leftHalf "));

    record("rightHalf");
    keyboard.combination(controlAlt, Key::h);
    EXPECT_TRUE(waitUntil([&] { return says("note", "Moved from “Left half”."); }));
    EXPECT_EQ(settled("rightHalf", controlOptionH), controlOptionH);
    EXPECT_EQ(stored("leftHalf"), cleared);
    EXPECT_TRUE(isIdle());
    keyboard.combination(controlAlt, Key::h);
    EXPECT_TRUE(waitUntil([&] { return says("fired", "snap.leftHalf snap.rightHalf "); }));
}

TEST_P(RecorderTest, everyWayOutLeavesTheKeyboardToOthers) {
    begin();
    auto& keyboard = desktop().keyboard();
    const auto before = keymap();
    record("topHalf");
    keyboard.tap(Key::escape);
    EXPECT_TRUE(isIdle());
    record("topHalf");
    click("topHalf");
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(keymap(), before);

    record("topHalf");
    click("maximize");
    awaitRecording("maximize");
    keyboard.tap(Key::backspace);
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(settled("maximize", cleared), cleared);
    EXPECT_EQ(stored("topHalf"), Stored{});
    EXPECT_TRUE(says("heard", "")) << state()["heard"];

    KeyLog other(desktop().display());
    EXPECT_TRUE(waitUntil([&] {
        const auto managed = desktop().windows().managed();
        return std::find(managed.begin(), managed.end(), other.window()) != managed.end();
    }));
    desktop().windows().activate(other.window());
    EXPECT_TRUE(waitUntil([&] { return other.isFocused() && says("active", "no"); }));
    desktop().windows().activate(window);
    EXPECT_TRUE(waitUntil([&] { return says("active", "yes"); }));

    record("topHalf");
    desktop().windows().activate(other.window());
    EXPECT_TRUE(isIdle());
    EXPECT_TRUE(waitUntil([&] { return other.isFocused(); }));
    keyboard.tap(Key::g);
    EXPECT_TRUE(waitUntil([&] { return other.story(42) == "+-"; }));
    keyboard.combination(controlAlt, Key::up);
    EXPECT_TRUE(waitUntil([&] { return says("fired", "snap.topHalf "); }));
    EXPECT_EQ(keymap().size(), 1U);
}

TEST_P(RecorderTest, itEndsWithItsWindowWhenNoOtherBecomesActive) {
    begin();
    record("topHalf");
    desktop().windows().minimize(window);
    EXPECT_TRUE(isIdle());
    EXPECT_TRUE(waitUntil([&] { return says("active", "no"); }));
    desktop().keyboard().combination(controlAlt, Key::up);
    EXPECT_TRUE(waitUntil([&] { return says("fired", "snap.topHalf "); }));
}

TEST_P(RecorderTest, aKeyThatIsHeldReachesNobodyElse) {
    begin();
    auto& keyboard = desktop().keyboard();
    record("leftHalf");
    keyboard.press(Key::leftControl);
    keyboard.press(Key::h);
    const Stored controlH{4, control, "H"};
    EXPECT_EQ(settled("leftHalf", controlH), controlH);
    EXPECT_TRUE(waitUntil([&] { return says("recording", ""); }));
    EXPECT_TRUE(keyboardIsTaken()) << "until the key is up";
    keyboard.release(Key::h);
    keyboard.release(Key::leftControl);
    EXPECT_TRUE(isIdle());
    // The space bar begins a recording where the control has the keyboard, and is a key in it.
    keyboard.tap(space);
    awaitRecording("leftHalf");
    keyboard.combination({Key::leftSuper}, space);
    const Stored commandSpace{49, command, "Space"};
    EXPECT_EQ(settled("leftHalf", commandSpace), commandSpace);
    EXPECT_TRUE(isIdle());
    EXPECT_TRUE(says("heard", "+65 -65 ")) << state()["heard"];
    EXPECT_TRUE(says("fired", ""));
}

TEST_P(RecorderTest, whatAnotherProgramHoldsIsRecordedAndMarked) {
    begin();
    XSession other(desktop().display());
    const auto j = static_cast<xcb_keycode_t>(Key::j);
    const auto commandMask = XCB_MOD_MASK_4;
    xcb_grab_key(other.connection(), 0, other.root(), commandMask, j, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    other.sync();
    const Stored commandJ{38, command, "J"};
    EXPECT_EQ(afterRecording("leftHalf", {Key::leftSuper}, Key::j, commandJ), commandJ);
    EXPECT_TRUE(waitUntil([&] { return state()["snap.leftHalf"].ends_with(" taken"); }));
    EXPECT_TRUE(says("status", "18 shortcuts registered · 1 taken by another app"));

    xcb_ungrab_key(other.connection(), j, other.root(), commandMask);
    other.sync();
    record("leftHalf");
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(waitUntil([&] { return state()["snap.leftHalf"].ends_with(" free"); }));
}

TEST_P(RecorderTest, aFurtherLevelOfTheLayoutIsNoPartOfAShortcut) {
    begin();
    desktop().run({"setxkbmap", "de"});
    record("leftHalf");
    desktop().keyboard().combination({Key::leftControl, rightAlt}, Key::h);
    EXPECT_TRUE(waitUntil([&] { return says("note", hint); })) << state()["note"];
    EXPECT_TRUE(says("recording", "snap.leftHalf"));
    desktop().keyboard().combination({Key::leftControl}, Key::j);
    const Stored controlJ{38, control, "J"};
    EXPECT_EQ(settled("leftHalf", controlJ), controlJ);
    EXPECT_TRUE(isIdle());
}

TEST_P(RecorderTest, theWindowMayBeMovedMeanwhile) {
    begin();
    record("leftHalf");
    const auto at = desktop().windows().visibleFrame(window).value_or(Frame{});
    auto& pointer = desktop().pointer();
    pointer.moveTo({at.x + at.width / 2, at.y + 8});
    pointer.press();
    pointer.moveTo({at.x + at.width / 2 - 200, at.y + 108});
    pointer.release();
    // Whether it could be moved, and whether that ended the recording, is the window manager's say.
    EXPECT_TRUE(waitUntil([&] { return desktop().x().windowManagerServes(); }));
    desktop().keyboard().tap(Key::escape);
    EXPECT_TRUE(isIdle());
    EXPECT_TRUE(waitUntil([&] { return pointer.isFree(); }));
    desktop().windows().place(window, {600, 300, 500, 400});
    EXPECT_TRUE(waitUntil([&] { return says("key", placed); })) << state()["key"];
    EXPECT_EQ(afterRecording("leftHalf", {Key::leftControl}, Key::j, {38, control, "J"}),
              (Stored{38, control, "J"}));
}

TEST_P(RecorderTest, everyKeyOfEveryLayoutCanBeRecorded) {
    begin();
    const auto expectRecorded = [&](const std::vector<Key>& held, Key key, const Stored& expected) {
        EXPECT_EQ(afterRecording("leftHalf", held, key, expected), expected);
        const auto before = state()["fired"];
        desktop().keyboard().combination(held, key);
        EXPECT_TRUE(waitUntil([&] { return says("fired", before + "snap.leftHalf "); }))
            << expected.key;
    };
    const int unnamed = firstUnnamed + static_cast<int>(mute);
    expectRecorded({Key::leftControl}, mute, {unnamed, control, "#" + std::to_string(unnamed)});
    expectRecorded({Key::leftControl}, keypadOne, {83, control, "1"});
    desktop().run({"setxkbmap", "de"});
    expectRecorded({Key::leftControl}, keyOfOneAndAHalf, {50, control, "^"});
    desktop().run({"setxkbmap", "ru"});
    expectRecorded(controlAlt, Key::a, {0, control | option, "Ф"});
    desktop().run({"setxkbmap", "us"});
    const auto before = state()["fired"];
    desktop().keyboard().combination(controlAlt, Key::a);
    EXPECT_TRUE(waitUntil([&] { return says("fired", before + "snap.leftHalf "); }));
}

INSTANTIATE_TEST_SUITE_P(On, RecorderTest, ::testing::Values("openbox", "xfwm4", "kwin"),
                         windowManagerName);

class WindowManagerKeysRecorderTest : public RecorderTest {};

// Alt and Tab would show a list of windows.
TEST_P(WindowManagerKeysRecorderTest, theWindowManagersCombinationsCanBeRecorded) {
    begin(WindowManagerKeys::asShipped);
    startClock({100, 300, 300, 300});
    ASSERT_TRUE(desktop().x().combinationIsHeld(static_cast<std::uint8_t>(tab), XCB_MOD_MASK_1));
    desktop().windows().activate(window);
    const Stored optionTab{48, option, "⇥"};
    EXPECT_EQ(afterRecording("leftHalf", {Key::leftAlt}, tab, optionTab), optionTab);
    EXPECT_TRUE(waitUntil([&] { return state()["snap.leftHalf"].ends_with(" taken"); }));
    EXPECT_TRUE(desktop().x().windowManagerServes());
    EXPECT_EQ(desktop().windows().active(), window);
    EXPECT_TRUE(says("active", "yes"));
    EXPECT_TRUE(says("fired", ""));
}

// KWin has been seen to grant a combination of its own, so that none is sure to be taken.
INSTANTIATE_TEST_SUITE_P(On, WindowManagerKeysRecorderTest, ::testing::Values("openbox", "xfwm4"),
                         windowManagerName);

class HeldKeyboardRecorderTest : public RecorderTest {};

TEST_P(HeldKeyboardRecorderTest, itEndsWhenSomebodyKeepsTheKeyboard) {
    begin();
    ASSERT_TRUE(desktop().keyboard().grab());
    click("topHalf");
    EXPECT_TRUE(waitUntil([&] { return says("recording", "snap.topHalf"); }));
    EXPECT_TRUE(waitUntil([&] { return says("recording", ""); }));
    desktop().keyboard().ungrab();
    EXPECT_TRUE(isIdle());
}

// Under Openbox the click that begins the recording has not come through while somebody else holds
// the keyboard.
INSTANTIATE_TEST_SUITE_P(On, HeldKeyboardRecorderTest, ::testing::Values("xfwm4", "kwin"),
                         windowManagerName);

class OpenboxRecorderTest : public RecorderTest {};

TEST_P(OpenboxRecorderTest, itEndsWhereTheFocusFollowsThePointerElsewhere) {
    begin();
    const xcb_window_t clock = startClock({100, 300, 300, 300});
    std::ofstream(desktop().home() / ".config/openbox/rc.xml") << R"(<?xml version="1.0"?>
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <focus><followMouse>yes</followMouse><focusDelay>0</focusDelay></focus>
  <keyboard/>
</openbox_config>
)";
    desktop().run({"openbox", "--reconfigure"});
    // The window manager takes up its settings some time after it was told to.
    const auto activatedAt = [&](Position place) {
        desktop().pointer().moveTo(place);
        EXPECT_TRUE(waitUntil([&] { return desktop().x().windowManagerServes(); }));
        return desktop().windows().active();
    };
    ASSERT_TRUE(waitUntil([&] {
        return activatedAt({250, 450}) == clock && activatedAt({1000, 600}) == window;
    }));
    EXPECT_TRUE(waitUntil([&] { return says("active", "yes"); }));
    // The window may hear of its comings and goings late, and the recording end with one of them.
    const auto recordingBegins = [&] {
        click("leftHalf");
        return waitUntil([&] { return isRecording("leftHalf"); }, std::chrono::seconds{3});
    };
    ASSERT_TRUE(recordingBegins() || recordingBegins());
    EXPECT_TRUE(waitUntil([&] { return activatedAt({250, 450}) == clock; }));
    EXPECT_TRUE(isIdle()) << "what is typed is meant for the other window";
}

INSTANTIATE_TEST_SUITE_P(On, OpenboxRecorderTest, ::testing::Values("openbox"), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
