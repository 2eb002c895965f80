// The page of shortcuts, as it is shown, clicked and followed.
#include "settings/shortcuts_page_view.h"

#include "settings/elided_label_view.h"
#include "settings/settings_view_fixture.h"
#include "shortcuts/shortcut_recorder_view.h"
#include "ui/mini_screen.h"
#include "ui/palette.h"

#include <memory>
#include <set>
#include <string>
#include <utility>

namespace tessellon {
namespace {

constexpr auto useControlCommand = "Use Control Super instead of Control Alt";
constexpr std::uint32_t controlOptionKeys = 0x1800;

class ShortcutsPageTest : public SettingsViewTest {
  protected:
    ShortcutsPage& open() {
        page = std::make_unique<ShortcutsPage>(settings());
        show(*page, {pageSize.width(), page->sizeHint().height()});
        return *page;
    }
    ElidedLabel& status() const { return *shown<ElidedLabel>(*page).front(); }
    ElidedLabel& note() const { return *shown<ElidedLabel>(*page).back(); }
    bool offers() const {
        return findNamed(shown<QAbstractButton>(*page), useControlCommand) != nullptr;
    }
    void holdLeftArrow() {
        hotKeyCenter.holdByOthers(123, controlOptionKeys);
        hotkeys.registerHotkeys();
        settle();
    }
    void type(std::uint32_t keyCode, std::uint64_t modifiers, std::string typed) {
        KeyEvent event;
        event.keyCode = keyCode;
        event.modifiers = modifiers;
        event.charactersIgnoringModifiers = std::move(typed);
        desktop_.eventMonitors().type(event);
        settle();
    }

    std::unique_ptr<ShortcutsPage> page;
};

TEST_F(ShortcutsPageTest, ShowsEveryActionOfEveryGroupWithItsShortcut) {
    open();
    for (const auto* name : {"Halves", "Quarters", "Thirds", "Other"}) {
        EXPECT_TRUE(says(*page, name)) << name;
    }
    std::set<std::string> titles;
    for (const auto* const label : shown<ElidedLabel>(*page)) {
        titles.insert(label->text().toStdString());
    }
    for (const auto action : allSnapActions) {
        EXPECT_TRUE(titles.contains(std::string(title(action)))) << title(action);
    }
    EXPECT_EQ(shown<MiniScreen>(*page).size(), allSnapActions.size());
    const auto recorders = shown<ShortcutRecorder>(*page);
    ASSERT_EQ(recorders.size(), allSnapActions.size());
    click(*recorders[2]);
    EXPECT_EQ(recorder.target(), HotkeyTarget::snap(allSnapActions[2]));
}

TEST_F(ShortcutsPageTest, TellsHowManyShortcutsWorkAndPausesThemForARecording) {
    open();
    EXPECT_EQ(status().text(), "19 shortcuts registered");
    EXPECT_EQ(status().color(), palette::muted);
    EXPECT_EQ(note().text(), "Defaults start with ⌃⌥. Use any key with ⌃, ⌥ or ⌘.");
    EXPECT_EQ(note().color(), palette::muted);
    holdLeftArrow();
    EXPECT_EQ(status().text(), "18 shortcuts registered · 1 taken by another app");
    EXPECT_EQ(status().color(), palette::coral);
    const auto before = page->sizeHint();

    click(*shown<ShortcutRecorder>(*page)[1]);
    EXPECT_EQ(status().text(), "Recording… shortcuts are paused for a moment.");
    EXPECT_EQ(status().color(), palette::muted);
    EXPECT_EQ(page->sizeHint().height(), before.height()) << "nothing jumps";
    EXPECT_TRUE(offers()) << "as before";
    type(8, modifier_flag::control | modifier_flag::option, "c");
    EXPECT_EQ(note().text(), "Moved from “Center”.");
    EXPECT_EQ(note().color(), palette::coral);
}

TEST_F(ShortcutsPageTest, ResettingEndsARecordingAndRestoresEveryShortcut) {
    bindings.setCombo(std::nullopt, HotkeyTarget::snap(SnapAction::center));
    open();
    click(*shown<ShortcutRecorder>(*page)[0]);
    click(control(*page, "Reset to defaults"));
    EXPECT_FALSE(recorder.target());
    EXPECT_EQ(bindings.shortcutText(SnapAction::center), "⌃⌥C");
    EXPECT_EQ(status().text(), "19 shortcuts registered");
}

TEST_F(ShortcutsPageTest, OffersOtherModifiersWhileAShortcutIsTaken) {
    open();
    EXPECT_FALSE(offers());
    holdLeftArrow();
    ASSERT_TRUE(offers());
    auto& button = control(*page, useControlCommand);
    button.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&button, Qt::Key_Space);
    settle();
    EXPECT_EQ(bindings.shortcutText(SnapAction::leftHalf), "⌃⌘←");
    EXPECT_EQ(status().text(), "19 shortcuts registered");
    EXPECT_FALSE(offers());
    EXPECT_TRUE(control(*page, "Reset to defaults").hasFocus());
    click(control(*page, "Reset to defaults"));
    EXPECT_TRUE(offers());
}

TEST_F(ShortcutsPageTest, LongCombinationsKeepToTheirColumn) {
    const KeyCombo longest{200, modifier_flag::all, "A key with quite a <b>long</b> label"};
    for (const auto action : allSnapActions) {
        auto combo = longest;
        combo.keyCode += static_cast<std::int64_t>(action);
        hotKeyCenter.holdByOthers(static_cast<std::uint32_t>(combo.keyCode), 0x1B00);
        bindings.setCombo(combo, HotkeyTarget::snap(action));
    }
    hotkeys.registerHotkeys();
    open();
    EXPECT_LE(page->minimumSizeHint().width(), pageSize.width());
    const auto titles = shown<ElidedLabel>(*page);
    const auto recorders = shown<ShortcutRecorder>(*page);
    for (std::size_t i = 0; i < recorders.size(); ++i) {
        const auto& title = *titles[i + 1];  // behind the status
        EXPECT_LT(title.geometry().right(), recorders[i]->geometry().left());
        EXPECT_LE(recorders[i]->geometry().right(), recorders[i]->parentWidget()->width() - 16);
        EXPECT_EQ(recorders[i]->size(), recorders[i]->sizeHint());
    }
}

TEST_F(ShortcutsPageTest, TextsThatDoNotFitAreCutAndShownWholeOnTop) {
    ElidedLabel label(QStringLiteral("Right <b>Two</b> Thirds\nof the whole screen"),
                      {.size = 13, .color = palette::ink, .lines = 2});
    EXPECT_EQ(label.text(), "Right <b>Two</b> Thirds of the whole screen");
    label.resize(label.sizeHint());
    label.show();
    EXPECT_EQ(label.lines(), QStringList{label.text()});
    EXPECT_EQ(label.toolTip(), "");
    label.resize(150, label.height());
    ASSERT_EQ(label.lines().size(), 2);
    EXPECT_EQ(label.lines()[0], "Right <b>Two</b>");
    EXPECT_TRUE(label.lines()[1].endsWith(QChar(0x2026))) << label.lines()[1].toStdString();
    EXPECT_TRUE(label.toolTip().contains(QStringLiteral("&lt;b&gt;Two&lt;/b&gt; Thirds of the")));
    label.resize(30, label.height());
    EXPECT_EQ(label.lines().size(), 2);
    EXPECT_TRUE(label.lines()[0].endsWith(QChar(0x2026)));
}

}  // namespace
}  // namespace tessellon
