// Which combination belongs to which target, and what a change leaves in storage.
#include "shortcuts/key_bindings.h"

#include "shortcuts/default_shortcuts.h"
#include "shortcuts/key_labels.h"
#include "shortcuts/shortcuts_fixture.h"

namespace tessellon {
namespace {

using KeyBindingsTest = ShortcutsTest;

TEST_F(KeyBindingsTest, NamesAndIdentifiersOfTargets) {
    const auto desk = addArrangementNamed("Desk Left");
    EXPECT_EQ(snap(SnapAction::almostMaximize).targetID(), "snap.almostMaximize");
    EXPECT_EQ(
        HotkeyTarget::arrangement(*Uuid::parse("3f2b8c1e-7d4a-4e6b-9a0c-5d1e2f3a4b5c")).targetID(),
        "arrangement.3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5C");
    EXPECT_EQ(bindings.title(snap(SnapAction::rightTwoThirds)), "Right two thirds");
    EXPECT_EQ(bindings.title(HotkeyTarget::tile()), "Tile this display");
    EXPECT_EQ(bindings.title(desk), "Desk Left");
    EXPECT_EQ(bindings.title(HotkeyTarget::arrangement(Uuid::random())), "Arrangement");

    const auto targets = bindings.allTargets();
    ASSERT_EQ(targets.size(), 21U);
    EXPECT_EQ(targets[18], snap(SnapAction::previousDisplay));
    EXPECT_EQ(targets[19], HotkeyTarget::tile());
    EXPECT_EQ(targets[20], desk);
}

TEST_F(KeyBindingsTest, WithoutStoredChangesEverythingIsBuiltIn) {
    for (const auto& target : bindings.allTargets()) {
        EXPECT_EQ(bindings.comboFor(target), defaultCombo(target));
    }
    EXPECT_EQ(bindings.comboFor(addArrangementNamed("A")), std::nullopt);
    EXPECT_EQ(bindings.shortcutText(SnapAction::leftHalf), "⌃⌥←");
    EXPECT_EQ(defaults.storedValues().count(preference::keymap), 0U);
}

TEST_F(KeyBindingsTest, StoresOnlyWhatDiffersSortedAndCompact) {
    bindings.setCombo(std::nullopt, HotkeyTarget::tile());
    bindings.setCombo(KeyCombo{4, controlOption | 0x10000, "H"}, snap(SnapAction::leftHalf));
    EXPECT_EQ(storedKeymap(), R"({"snap.leftHalf":{"keyCode":4,"mods":786432,"key":"H"},)"
                              R"("tile":{"keyCode":-1,"mods":0,"key":""}})");
    EXPECT_EQ(bindings.comboFor(HotkeyTarget::tile()), std::nullopt);
    EXPECT_EQ(bindings.shortcutText(SnapAction::leftHalf), "⌃⌥H");

    bindings.setCombo(KeyCombo{123, controlOption | 1, "left"}, snap(SnapAction::leftHalf));
    bindings.setCombo(KeyCombo{17, controlOptionCommand, "T"}, HotkeyTarget::tile());
    EXPECT_EQ(storedKeymap(), "{}");
}

TEST_F(KeyBindingsTest, AnyNegativeKeyCodeMeansNoShortcut) {
    storeKeymap(R"({"snap.center":{"mods":1,"key":"?","keyCode":-7}})");
    EXPECT_EQ(bindings.comboFor(snap(SnapAction::center)), std::nullopt);
    EXPECT_EQ(bindings.shortcutText(SnapAction::center), "");
}

TEST_F(KeyBindingsTest, AssigningTakesTheCombinationFromItsOwner) {
    int rebinds = 0;
    const auto token = bindings.rebound().subscribe([&] { ++rebinds; });
    const auto moved =
        bindings.assignCombo(123, controlOption | 0x100, "←", snap(SnapAction::rightHalf));
    EXPECT_EQ(moved, "Left half");
    EXPECT_EQ(bindings.comboFor(snap(SnapAction::leftHalf)), std::nullopt);
    EXPECT_EQ(bindings.comboFor(snap(SnapAction::rightHalf)), (KeyCombo{123, controlOption, "←"}));
    EXPECT_EQ(rebinds, 1);

    EXPECT_EQ(bindings.assignCombo(0, controlOption, "A", snap(SnapAction::rightHalf)),
              std::nullopt);
    EXPECT_EQ(bindings.comboFor(snap(SnapAction::leftHalf)), std::nullopt) << "stays cleared";
    EXPECT_EQ(bindings.assignCombo(17, controlOptionCommand, "T", snap(SnapAction::center)),
              "Tile this display")
        << "tiling takes part while it is off";
    EXPECT_EQ(bindings.comboFor(HotkeyTarget::tile()), std::nullopt);
}

TEST_F(KeyBindingsTest, AssigningTakesFromEveryOwnerAndNamesTheLast) {
    const KeyCombo combo{8, controlOption, "C"};
    addArrangementNamed("First", combo);
    const auto second = addArrangementNamed("Second", combo);
    const auto third = addArrangementNamed("Third");
    EXPECT_EQ(bindings.assignCombo(8, controlOption, "C", third), "Second");
    EXPECT_EQ(bindings.comboFor(snap(SnapAction::center)), std::nullopt);
    EXPECT_EQ(bindings.comboFor(second), std::nullopt);
    EXPECT_EQ(bindings.comboFor(third), combo);
    EXPECT_EQ(storedKeymap(), R"({"snap.center":{"keyCode":-1,"mods":0,"key":""}})");
}

TEST_F(KeyBindingsTest, AnArrangementThatIsGoneTakesNoShortcut) {
    addArrangementNamed("A");
    const auto before = defaults.storedValues();
    int saves = 0;
    const auto token =
        notifications.observe(notification::arrangementsChanged, [&](auto&) { ++saves; });
    const auto gone = HotkeyTarget::arrangement(Uuid::random());
    EXPECT_FALSE(bindings.exists(gone));
    bindings.setCombo(KeyCombo{8, controlOption, "C"}, gone);
    EXPECT_EQ(bindings.assignCombo(8, controlOption, "C", gone), std::nullopt);
    EXPECT_EQ(bindings.shortcutText(SnapAction::center), "⌃⌥C");
    EXPECT_EQ(saves, 0);
    EXPECT_EQ(defaults.storedValues(), before);
}

TEST_F(KeyBindingsTest, TilingIsBoundOnlyWhileItIsOn) {
    const auto isTile = [](const KeyBinding& b) { return b.target == HotkeyTarget::tile(); };
    auto bound = bindings.bindings();
    EXPECT_EQ(bound.size(), 19U);
    EXPECT_TRUE(std::none_of(bound.begin(), bound.end(), isTile));
    EXPECT_TRUE(bindings.comboFor(HotkeyTarget::tile()));
    defaults.setBool(preference::tilingEnabled, true);
    EXPECT_TRUE(isTile(bindings.bindings().back()));
}

TEST_F(KeyBindingsTest, ResettingLeavesArrangementsAlone) {
    std::string order;
    const auto reset = bindings.willReset().subscribe(
        [&] { order += storedKeymap() == "(nothing)" ? "late " : "before "; });
    const auto rebound = bindings.rebound().subscribe([&] { order += storedKeymap(); });
    const auto desk = addArrangementNamed("Desk", KeyCombo{1, controlOption, "S"});
    bindings.setCombo(std::nullopt, snap(SnapAction::center));
    bindings.resetToDefaults();
    EXPECT_EQ(order, "before (nothing)");
    EXPECT_TRUE(bindings.comboFor(snap(SnapAction::center)));
    EXPECT_TRUE(bindings.comboFor(desk));
}

TEST_F(KeyBindingsTest, ControlCommandTakesThePlaceOfControlOption) {
    const auto desk = addArrangementNamed("Desk", KeyCombo{5, controlCommand, "G"});
    bindings.setCombo(std::nullopt, snap(SnapAction::center));
    bindings.setCombo(KeyCombo{4, controlOption, "H"}, snap(SnapAction::leftHalf));
    bindings.setCombo(KeyCombo{0, controlOption, "A"}, snap(SnapAction::nextDisplay));
    bindings.setCombo(std::nullopt, HotkeyTarget::tile());
    EXPECT_FALSE(bindings.usesControlCommand());

    int writes = 0;
    std::string order;
    const auto written = defaults.changed().subscribe([&](std::string_view) { ++writes; });
    const auto reset =
        bindings.willReset().subscribe([&] { order += writes == 0 ? "before " : "late "; });
    const auto rebound = bindings.rebound().subscribe([&] { order += "after"; });
    bindings.useControlCommand();
    EXPECT_EQ(order, "before after");
    EXPECT_EQ(writes, 1);
    EXPECT_TRUE(bindings.usesControlCommand());
    for (const auto& [action, keyCode, key, mods] : defaultShortcuts) {
        const auto shortcut = bindings.shortcutText(action);
        if (mods == controlOptionCommand) {
            EXPECT_EQ(shortcut, action == SnapAction::nextDisplay ? "⌃⌥A" : "⌃⌥⌘←");
        } else {
            EXPECT_EQ(shortcut,
                      (action == SnapAction::almostMaximize ? "⌃⇧⌘" : "⌃⌘") + std::string(key));
        }
    }
    EXPECT_EQ(bindings.comboFor(HotkeyTarget::tile()), std::nullopt);
    EXPECT_EQ(bindings.comboFor(desk), (KeyCombo{5, controlCommand, "G"}));

    bindings.resetToDefaults();
    EXPECT_FALSE(bindings.usesControlCommand());
    EXPECT_EQ(bindings.shortcutText(SnapAction::leftHalf), "⌃⌥←");
    EXPECT_EQ(storedKeymap(), "(nothing)");
}

TEST_F(KeyBindingsTest, UnreadableStorageIsIgnoredAndKeptAsideWhenReplaced) {
    for (const auto* bad : {"", "[]", "{\"tile\":{\"keyCode\":1,\"mods\":0}}", "{\"tile\":",
                            "{\"tile\":{\"keyCode\":1,\"mods\":0,\"key\":\"a\"},\"x\":1}"}) {
        storeKeymap(bad);
        EXPECT_TRUE(bindings.loadKeymap().empty()) << bad;
        EXPECT_EQ(bindings.shortcutText(SnapAction::leftHalf), "⌃⌥←");
        EXPECT_EQ(storedKeymap(), bad) << "reading changes nothing";
        bindings.setCombo(std::nullopt, HotkeyTarget::tile());
        ASSERT_FALSE(defaults.keptAside().empty());
        EXPECT_EQ(defaults.keptAside().back().value, PropertyValue(dataOf(bad)));
    }
    EXPECT_EQ(defaults.keptAside().size(), 5U);
    bindings.setCombo(std::nullopt, snap(SnapAction::center));
    EXPECT_EQ(defaults.keptAside().size(), 5U) << "a readable value is simply replaced";

    defaults.setString(preference::keymap, "not data");
    bindings.resetToDefaults();
    EXPECT_EQ(defaults.keptAside().size(), 6U);
    storeKeymap("broken");
    bindings.useControlCommand();
    EXPECT_EQ(defaults.keptAside().size(), 7U);
    EXPECT_TRUE(bindings.usesControlCommand());
}

TEST_F(KeyBindingsTest, WhatCannotBeWrittenLeavesStorageAsItWas) {
    storeKeymap("broken");
    bindings.setCombo(KeyCombo{0, controlOption, "\xFF"}, snap(SnapAction::center));
    EXPECT_EQ(storedKeymap(), "broken");
    EXPECT_TRUE(defaults.keptAside().empty());
}

}  // namespace
}  // namespace tessellon
