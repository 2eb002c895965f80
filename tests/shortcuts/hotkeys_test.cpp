// The registration of the bindings with the system, and what happens when one is pressed.
#include "shortcuts/hotkeys.h"

#include "shortcuts/shortcuts_fixture.h"

#include <vector>

namespace tessellon {
namespace {

class HotkeysTest : public ShortcutsTest {
  protected:
    void start() {
        hotkeys.setHandler([this](const HotkeyTarget& target) { pressed.push_back(target); });
    }

    std::vector<HotkeyTarget> pressed;
};

TEST_F(HotkeysTest, ModifiersAreConverted) {
    EXPECT_EQ(hotKeyModifiers(0xC0000), 0x1800U);
    EXPECT_EQ(hotKeyModifiers(0xE0000), 0x1A00U);
    EXPECT_EQ(hotKeyModifiers(0x1C0000), 0x1900U);
    EXPECT_EQ(hotKeyModifiers(~modifier_flag::all), 0U);
}

TEST_F(HotkeysTest, NothingIsRegisteredBeforeThereIsAHandler) {
    hotkeys.registerHotkeys();
    EXPECT_EQ(center.registeredCount(), 0U);
    EXPECT_EQ(hotkeys.statusText(), "0 shortcuts registered");
    start();
    EXPECT_EQ(center.registeredCount(), 19U);
    hotkeys.setHandler([](const HotkeyTarget&) { FAIL() << "only the first handler counts"; });
    EXPECT_EQ(center.handlerCount(), 1U);
    EXPECT_EQ(center.press(123, controlOptionKeys), HotKeyEventStatus::handled);
    EXPECT_EQ(pressed, std::vector{snap(SnapAction::leftHalf)});
}

TEST_F(HotkeysTest, IdsFollowTheOrderOfTheTargets) {
    defaults.setBool(preference::tilingEnabled, true);
    start();
    ASSERT_EQ(hotkeys.registeredCount(), 20U);
    EXPECT_TRUE(hotkeys.takenTargets().empty());
    EXPECT_EQ(center.registeredId(123, controlOptionKeys), (HotKeyId{0x54534C4E, 0}));
    EXPECT_EQ(center.registeredId(17, 0x1900), (HotKeyId{0x54534C4E, 19}));
}

TEST_F(HotkeysTest, RefusedCombinationsTakeNoId) {
    center.holdByOthers(126, controlOptionKeys);  // the third binding, top half
    start();
    EXPECT_EQ(center.registeredId(125, controlOptionKeys), (HotKeyId{hotKeySignature, 2}));
    EXPECT_EQ(hotkeys.takenTargets(), std::unordered_set{snap(SnapAction::topHalf)});
    EXPECT_EQ(hotkeys.statusText(), "18 shortcuts registered · 1 taken by another app");
    center.press(125, controlOptionKeys);
    EXPECT_EQ(pressed, std::vector{snap(SnapAction::bottomHalf)});

    center.releaseByOthers(126, controlOptionKeys);
    hotkeys.registerHotkeys();
    EXPECT_EQ(hotkeys.statusText(), "19 shortcuts registered");
}

TEST_F(HotkeysTest, TheEarlierTargetKeepsASharedCombination) {
    const auto desk = addArrangementNamed("Desk", KeyCombo{8, controlOption, "C"});
    start();
    EXPECT_EQ(hotkeys.takenTargets(), std::unordered_set{desk});
    EXPECT_EQ(hotkeys.registeredCount(), 19U);
    center.press(8, controlOptionKeys);
    EXPECT_EQ(pressed, std::vector{snap(SnapAction::center)});
}

TEST_F(HotkeysTest, ARefusedCombinationIsOpenToLaterTargets) {
    // Only what was registered blocks: the later target is asked for again, and refused by itself.
    const auto desk = addArrangementNamed("Desk", KeyCombo{8, controlOption, "C"});
    center.holdByOthers(8, controlOptionKeys);
    start();
    EXPECT_EQ(hotkeys.takenTargets(), (std::unordered_set{snap(SnapAction::center), desk}));
}

TEST_F(HotkeysTest, KeyCodesThatNoKeyHasCountAsTaken) {
    storeKeymap(R"({"snap.center":{"keyCode":4294967419,"mods":786432,"key":"?"},)"
                R"("snap.restore":{"keyCode":9223372036854775807,"mods":786432,"key":"?"}})");
    const auto desk = addArrangementNamed("Desk", KeyCombo{-1, controlOption, ""});
    start();
    EXPECT_EQ(hotkeys.takenTargets(),
              (std::unordered_set{snap(SnapAction::center), snap(SnapAction::restore), desk}));
    EXPECT_EQ(hotkeys.registeredCount(), 17U);
    EXPECT_EQ(center.registeredId(123, controlOptionKeys), (HotKeyId{hotKeySignature, 0}));
}

TEST_F(HotkeysTest, EventsThatAreNotOursArePassedOn) {
    start();
    EXPECT_EQ(center.post(std::nullopt), HotKeyEventStatus::notHandled);
    EXPECT_EQ(center.post(HotKeyId{0x54534C4F, 0}), HotKeyEventStatus::notHandled);
    EXPECT_EQ(center.post(HotKeyId{hotKeySignature, 19}), HotKeyEventStatus::handled);
    EXPECT_EQ(center.post(HotKeyId{hotKeySignature, 0xFFFFFFFF}), HotKeyEventStatus::handled);
    EXPECT_TRUE(pressed.empty());
}

TEST_F(HotkeysTest, RecordingPausesAllHotKeys) {
    start();
    int changes = 0;
    const auto token =
        notifications.observe(notification::hotkeysChanged, [&](auto&) { ++changes; });
    hotkeys.setRecordingPause(true);
    EXPECT_EQ(center.registeredCount(), 0U);
    EXPECT_EQ(hotkeys.statusText(), "Recording… shortcuts are paused for a moment.");
    hotkeys.setRecordingPause(true);
    EXPECT_EQ(changes, 1);
    hotkeys.setRecordingPause(false);
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(center.registeredCount(), 19U);
}

TEST_F(HotkeysTest, AssigningAndResettingRegisterAnew) {
    start();
    bindings.assignCombo(0, controlOption, "A", snap(SnapAction::leftHalf));
    EXPECT_EQ(center.press(123, controlOptionKeys), std::nullopt);
    EXPECT_EQ(center.press(0, controlOptionKeys), HotKeyEventStatus::handled);
    bindings.resetToDefaults();
    EXPECT_EQ(center.press(123, controlOptionKeys), HotKeyEventStatus::handled);
    EXPECT_EQ(pressed.size(), 2U);
}

TEST_F(HotkeysTest, AHandlerMayRegisterAnew) {
    hotkeys.setHandler([this](const HotkeyTarget& target) {
        bindings.assignCombo(0, controlOption, "A", target);
        center.holdByOthers(123, controlOptionKeys);  // moves all later targets in the list
        hotkeys.registerHotkeys();
        pressed.push_back(target);
        hotkeys.setRecordingPause(true);
    });
    EXPECT_EQ(center.press(124, controlOptionKeys), HotKeyEventStatus::handled);
    EXPECT_EQ(pressed, std::vector{snap(SnapAction::rightHalf)});
    EXPECT_EQ(center.registeredCount(), 0U);
}

TEST_F(HotkeysTest, RegistersAnewWhenTheKeyboardChanges) {
    center.holdByOthers(126, controlOptionKeys);
    start();
    center.releaseByOthers(126, controlOptionKeys);
    center.changeKeyboard();
    EXPECT_EQ(hotkeys.registeredCount(), 19U);
    EXPECT_TRUE(hotkeys.takenTargets().empty());
}

TEST_F(HotkeysTest, LeavesHotKeysAloneWhenNoBindingHasChanged) {
    start();
    int registrations = 0;
    const auto observer = notifications.observe(notification::hotkeysChanged,
                                                [&](const std::any&) { ++registrations; });
    defaults.setDouble(preference::gap, 3);
    hotkeys.registerChangedBindings();
    EXPECT_EQ(registrations, 0);
    defaults.setBool(preference::tilingEnabled, true);
    hotkeys.registerChangedBindings();
    EXPECT_EQ(registrations, 1);
    EXPECT_EQ(hotkeys.registeredCount(), 20U);
}

}  // namespace
}  // namespace tessellon
