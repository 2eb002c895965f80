// Combinations, their labels and the built-in shortcuts.
#include "shortcuts/key_combo.h"

#include "shortcuts/default_shortcuts.h"
#include "shortcuts/key_labels.h"

#include <nlohmann/json.hpp>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

constexpr auto controlOption = modifier_flag::control | modifier_flag::option;

TEST(KeyCombo, OnlyTheKeyAndFourModifiersMakeAShortcut) {
    EXPECT_TRUE(sameShortcut({4, controlOption, "H"}, {4, controlOption | 0x10001, "x"}));
    EXPECT_FALSE(sameShortcut({4, controlOption, "H"}, {5, controlOption, "H"}));
    EXPECT_FALSE(sameShortcut({4, controlOption, "H"}, {4, modifier_flag::control, "H"}));
}

TEST(KeyCombo, AllThreeKeysAreRequired) {
    EXPECT_TRUE(keyComboFromJson(Json::parse(R"({"key":"","mods":0,"keyCode":-1,"more":1})")));
    for (const auto* text :
         {R"({"keyCode":1,"mods":0})", R"({"keyCode":1,"key":"a"})", R"({"mods":0,"key":"a"})",
          R"({"keyCode":"1","mods":0,"key":"a"})", R"({"keyCode":1.5,"mods":0,"key":"a"})",
          R"({"keyCode":1,"mods":-1,"key":"a"})", R"({"keyCode":1,"mods":0,"key":null})",
          "[1,0,\"a\"]", "null"}) {
        EXPECT_FALSE(keyComboFromJson(Json::parse(text))) << text;
    }
}

TEST(KeyCombo, OtherModifierBitsAreNeitherReadNorWritten) {
    const auto combo =
        keyComboFromJson(Json::parse(R"({"keyCode":123,"mods":10485248,"key":"←"})"));
    ASSERT_TRUE(combo);
    EXPECT_EQ(combo->mods & ~modifier_flag::all, 0U);
    JsonWriter writer;
    writeKeyCombo(writer, {123, controlOption | 0x100, "←"});
    const auto bytes = std::move(writer).finish();
    ASSERT_TRUE(bytes);
    EXPECT_EQ(std::string(bytes->begin(), bytes->end()),
              R"({"keyCode":123,"mods":786432,"key":"←"})");
}

TEST(KeyLabels, TableThenTypedCharactersThenCode) {
    EXPECT_EQ(keyLabel(36, "\r"), "↩");
    EXPECT_EQ(keyLabel(111, ""), "F12");
    EXPECT_EQ(keyLabel(4, "h"), "H");
    EXPECT_EQ(keyLabel(41, " ö\n"), "Ö");
    EXPECT_EQ(keyLabel(10, ""), "#10");
    EXPECT_EQ(keyLabel(10, " \t\u00A0"), "#10");
}

TEST(KeyLabels, ModifiersComeInFixedOrder) {
    EXPECT_EQ(displayText({36, 0xE0000, "↩"}), "⌃⌥⇧↩");
    EXPECT_EQ(displayText({17, 0x1C0000, "T"}), "⌃⌥⌘T");
    EXPECT_EQ(displayKeys({0, modifier_flag::command | modifier_flag::shift | 1, "A"}),
              (std::vector<std::string>{"⇧", "⌘", "A"}));
}

TEST(DefaultShortcuts, NoTwoTargetsShareOne) {
    std::vector<KeyCombo> combos{defaultCombo(HotkeyTarget::tile()).value()};
    for (const auto action : allSnapActions) {
        combos.push_back(defaultCombo(HotkeyTarget::snap(action)).value());
    }
    for (std::size_t i = 0; i < combos.size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            EXPECT_FALSE(sameShortcut(combos[i], combos[j])) << displayText(combos[i]);
        }
    }
    EXPECT_EQ(displayText(*defaultCombo(HotkeyTarget::snap(SnapAction::previousDisplay))), "⌃⌥⌘←");
    EXPECT_EQ(displayText(*defaultCombo(HotkeyTarget::snap(SnapAction::almostMaximize))), "⌃⌥⇧↩");
    EXPECT_EQ(defaultCombo(HotkeyTarget::arrangement(Uuid::random())), std::nullopt);
}

}  // namespace
}  // namespace tessellon
