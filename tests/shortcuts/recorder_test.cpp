// The recording of a shortcut: what each key does to it, and every way in which it ends.
#include "shortcuts/recorder.h"

#include "platform/key_event.h"
#include "shortcuts/recorder_fixture.h"

#include <vector>

namespace tessellon {
namespace {

constexpr std::uint32_t h = 4;
constexpr std::uint32_t arrowLeft = virtual_key::leftArrow;

using RecorderTest = RecorderFixture;

TEST_F(RecorderTest, TakesTheKeyboardWithTheWindowsFrameAndPausesAllShortcuts) {
    EXPECT_TRUE(isIdle());
    recorder->toggle(left);
    EXPECT_TRUE(isRecording(left));
    EXPECT_TRUE(keyboardFocus.isTaken());
    EXPECT_EQ(keyboardFocus.frame(), window);
    EXPECT_EQ(hotkeys.statusText(), "Recording… shortcuts are paused for a moment.");
    EXPECT_EQ(type(h, controlOption, "h"), KeyVerdict::used);
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌃⌥H");
    EXPECT_EQ(center.press(h, controlOptionKeys), HotKeyEventStatus::handled);
    EXPECT_EQ(center.press(arrowLeft, controlOptionKeys), std::nullopt);
    EXPECT_EQ(recorder->note(), std::nullopt);
    EXPECT_EQ(type(h, controlOption, "h"), KeyVerdict::notUsed);
}

TEST_F(RecorderTest, KeysThatOnlyTypeAreAnsweredWithAHint) {
    recorder->toggle(left);
    EXPECT_EQ(type(h, 0, "h"), KeyVerdict::used);
    EXPECT_EQ(recorder->note(), hint);
    EXPECT_EQ(beep.count(), 1);
    for (const auto code :
         {h, virtual_key::deleteBackward, virtual_key::deleteForward, virtual_key::escape}) {
        type(code, modifier_flag::shift);
    }
    EXPECT_EQ(beep.count(), 5);
    KeyEvent repeat;
    repeat.keyCode = h;
    repeat.isRepeat = true;
    monitors.type(repeat);
    EXPECT_EQ(beep.count(), 5) << "one key, one beep";
    EXPECT_TRUE(isRecording(left));
    EXPECT_EQ(storedKeymap(), "(nothing)");

    type(h, controlOption, "h");
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌃⌥H");
    EXPECT_EQ(recorder->note(), std::nullopt);
}

TEST_F(RecorderTest, AFurtherLevelCannotBeRecorded) {
    recorder->toggle(left);
    KeyEvent event;
    event.isOnFurtherLevel = true;
    int keys = 0;
    for (const auto code : {h, virtual_key::escape, virtual_key::deleteBackward}) {
        for (const auto modifiers : {modifier_flag::control, std::uint64_t{0}}) {
            event.keyCode = code;
            event.modifiers = modifiers;
            EXPECT_EQ(monitors.type(event), KeyVerdict::used);
            EXPECT_EQ(recorder->note(), hint);
            EXPECT_EQ(beep.count(), ++keys);
        }
    }
    EXPECT_TRUE(isRecording(left));
    EXPECT_EQ(storedKeymap(), "(nothing)");
    type(h, modifier_flag::control, "h");
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌃H");
}

TEST_F(RecorderTest, EscapeAloneCancelsAndDeleteAloneClears) {
    recorder->toggle(left);
    type(h, 0, "h");
    type(virtual_key::escape);
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(recorder->note(), hint) << "the hint of this recording stays";
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌃⌥←");

    for (const auto code : {virtual_key::deleteBackward, virtual_key::deleteForward}) {
        recorder->toggle(left);
        EXPECT_EQ(recorder->note(), std::nullopt);
        type(h, 0, "h");
        // The keypad and Caps Lock mark their keys with other bits.
        type(code, 0x210000);
        EXPECT_TRUE(isIdle());
        EXPECT_EQ(recorder->note(), std::nullopt);
        EXPECT_EQ(recorder->comboFor(left), std::nullopt);
        EXPECT_EQ(center.press(arrowLeft, controlOptionKeys), std::nullopt);
        bindings.resetToDefaults();
    }

    recorder->toggle(left);
    type(virtual_key::escape, controlOption);
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌃⌥⎋");
    recorder->toggle(left);
    type(virtual_key::deleteBackward, modifier_flag::command);
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌘⌫");
}

TEST_F(RecorderTest, OnlyTheFourModifiersAreStored) {
    recorder->toggle(left);
    type(h, controlOption | modifier_flag::rightCommand | 0x10000, " h\n");
    EXPECT_EQ(storedKeymap(), R"({"snap.leftHalf":{"keyCode":4,"mods":786432,"key":"H"}})");
    recorder->toggle(left);
    type(virtual_key::firstUnnamed + 121, modifier_flag::command);
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌘#377");
    recorder->toggle(left);
    type(0, controlOption, "ф");
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌃⌥Ф");
}

TEST_F(RecorderTest, ACombinationIsTakenFromWhoeverHadIt) {
    recorder->toggle(right);
    type(arrowLeft, controlOption);
    EXPECT_EQ(recorder->note(), "Moved from “Left half”.");
    EXPECT_EQ(recorder->comboFor(left), std::nullopt);
    EXPECT_EQ(shortcut(SnapAction::rightHalf), "⌃⌥←");
    EXPECT_TRUE(isIdle());

    const auto desk = addArrangementNamed("Desk");
    recorder->toggle(desk);
    EXPECT_EQ(recorder->note(), std::nullopt);
    type(arrowLeft, controlOption);
    EXPECT_EQ(recorder->note(), "Moved from “Right half”.");
    recorder->toggle(left);
    type(arrowLeft, controlOption);
    EXPECT_EQ(recorder->note(), "Moved from “Desk”.");
    EXPECT_EQ(recorder->comboFor(desk), std::nullopt);
}

TEST_F(RecorderTest, WhatAnotherProgramHoldsIsStoredAndMarked) {
    center.holdByOthers(h, controlOptionKeys);
    recorder->toggle(left);
    EXPECT_FALSE(recorder->isTaken(left));
    type(h, controlOption, "h");
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌃⌥H");
    EXPECT_TRUE(recorder->isTaken(left));
    center.releaseByOthers(h, controlOptionKeys);
    hotkeys.registerHotkeys();
    EXPECT_FALSE(recorder->isTaken(left));
}

TEST_F(RecorderTest, ASecondClickEndsItAndAnotherControlTakesItOver) {
    recorder->toggle(left);
    recorder->toggle(left);
    EXPECT_TRUE(isIdle());

    recorder->toggle(left);
    type(h, 0, "h");
    recorder->toggle(right);
    EXPECT_TRUE(isRecording(right));
    EXPECT_TRUE(keyboardFocus.isTaken());
    EXPECT_EQ(recorder->note(), std::nullopt);
    type(h, controlOption, "h");
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌃⌥←");
    EXPECT_EQ(shortcut(SnapAction::rightHalf), "⌃⌥H");
}

TEST_F(RecorderTest, ItEndsWithTheKeyWindowWithAResetAndWithTheRecorder) {
    recorder->toggle(left);
    keyboardFocus.lose();
    EXPECT_TRUE(isIdle());

    recorder->toggle(left);
    bindings.resetToDefaults();
    EXPECT_TRUE(isIdle());

    recorder->toggle(left);
    recorder.reset();
    EXPECT_EQ(monitors.keyMonitorCount(), 0U);
    EXPECT_FALSE(keyboardFocus.isTaken());
    EXPECT_FALSE(hotkeys.recordingPause());
    EXPECT_EQ(center.registeredCount(), 19U);
    hotkeys.registerHotkeys();
    bindings.resetToDefaults();
}

TEST_F(RecorderTest, ItEndsWithItsTarget) {
    const auto desk = addArrangementNamed("Desk");
    const auto other = addArrangementNamed("Other");
    recorder->toggle(desk);
    removeArrangement(store, *Uuid::parse(other.targetID().substr(sizeof "arrangement")));
    EXPECT_TRUE(isRecording(desk));
    removeArrangement(store, *Uuid::parse(desk.targetID().substr(sizeof "arrangement")));
    EXPECT_TRUE(isIdle());

    const auto edited = addArrangementNamed("Edited");
    recorder->toggle(edited);
    defaults.edit(preference::gap, 3.0);
    EXPECT_TRUE(isRecording(edited));
    defaults.edit(preference::arrangements, std::nullopt);
    EXPECT_TRUE(isIdle());

    recorder->toggle(left);
    addArrangementNamed("Another");
    defaults.edit(preference::arrangements, std::nullopt);
    EXPECT_TRUE(isRecording(left));
}

TEST_F(RecorderTest, WithoutAKeyWindowTheKeyboardIsLeftAlone) {
    application.setKeyWindowFrame(std::nullopt);
    recorder->toggle(left);
    EXPECT_TRUE(isRecording(left));
    EXPECT_FALSE(keyboardFocus.isTaken());
    recorder->stop();
    EXPECT_TRUE(isIdle());
}

TEST_F(RecorderTest, StoppingWithoutARecordingChangesNothing) {
    int changes = 0;
    const auto token = recorder->changed().subscribe([&] { ++changes; });
    recorder->stop();
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(recorder->revision(), 0);
    // A pause that somebody else has made is not the recorder's to end.
    hotkeys.setRecordingPause(true);
    recorder->stop();
    EXPECT_TRUE(hotkeys.recordingPause());
}

TEST_F(RecorderTest, ViewsHearOfEveryChangeOnceItIsThere) {
    std::vector<std::optional<HotkeyTarget>> targets;
    std::vector<std::string> shortcuts;
    std::vector<bool> paused;
    const auto token = recorder->changed().subscribe([&] {
        targets.push_back(recorder->target());
        shortcuts.push_back(shortcut(SnapAction::leftHalf));
        paused.push_back(hotkeys.recordingPause());
    });
    recorder->toggle(left);
    ASSERT_FALSE(targets.empty());
    EXPECT_EQ(targets.back(), left);
    targets.clear();
    type(h, 0, "h");
    EXPECT_EQ(targets, std::vector{recorder->target()}) << "the note";
    const int before = recorder->revision();
    type(h, controlOption, "h");
    EXPECT_GT(recorder->revision(), before);
    EXPECT_EQ(targets.back(), std::nullopt);
    EXPECT_EQ(shortcuts.back(), "⌃⌥H");
    EXPECT_FALSE(paused.back());
    const int after = recorder->revision();
    hotkeys.registerHotkeys();
    EXPECT_EQ(recorder->revision(), after + 1);
}

TEST_F(RecorderTest, WhoeverHearsOfAChangeMayStopOrStartARecording) {
    // Stops as soon as the shortcuts are paused.
    auto token = notifications.observe(notification::hotkeysChanged, [&](const auto&) {
        if (hotkeys.recordingPause()) {
            recorder->stop();
        }
    });
    recorder->toggle(left);
    EXPECT_TRUE(isIdle());

    // Goes on with the next target after each one.
    token.reset();
    bool again = true;
    token = recorder->changed().subscribe([&] {
        if (!recorder->target() && std::exchange(again, false)) {
            recorder->toggle(right);
        }
    });
    recorder->toggle(left);
    type(h, controlOption, "h");
    EXPECT_TRUE(isRecording(right));
    EXPECT_TRUE(keyboardFocus.isTaken());
    type(h, modifier_flag::command, "h");
    EXPECT_TRUE(isIdle());
    EXPECT_EQ(shortcut(SnapAction::leftHalf), "⌃⌥H");
    EXPECT_EQ(shortcut(SnapAction::rightHalf), "⌘H");
}

}  // namespace
}  // namespace tessellon
