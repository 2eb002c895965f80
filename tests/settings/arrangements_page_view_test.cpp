// The page of arrangements, as it is typed into, clicked, and followed by what changes elsewhere.
#include "settings/arrangements_page_view.h"

#include "settings/arrangement_row_view.h"
#include "settings/arrangements_fixture.h"
#include "settings/elided_label_view.h"
#include "settings/settings_view_fixture.h"
#include "shortcuts/shortcut_recorder_view.h"
#include "ui/chip.h"
#include "ui/text_field.h"

#include <QAccessible>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tessellon {
namespace {

class ArrangementsPageTest : public SettingsViewTest {
  protected:
    ArrangementsPage& open() {
        page = std::make_unique<ArrangementsPage>(settings());
        show(*page, {pageSize.width(), page->sizeHint().height()});
        return *page;
    }
    /// Stores arrangements of these names and shows them.
    void openWith(const std::vector<std::string>& names) {
        std::vector<Arrangement> list;
        for (const auto& name : names) {
            list.push_back(arrangementOf(name, {"com.editor"}));
        }
        store.save(list);
        open();
    }
    TextField& field(std::size_t row) const { return *shown<TextField>(*page).at(row); }
    std::string stored(std::size_t index) const { return store.load().at(index).name; }
    void renameElsewhere(std::size_t index, const std::string& name) {
        renameArrangement(store, store.load().at(index).id, name);
        settle();
    }
    std::string focused() const { return nameOf(*page->focusWidget()); }
    bool shows(const std::string& text) const {
        return says(*page, text) ||
               std::ranges::any_of(shown<ElidedLabel>(*page), [&text](const auto* label) {
                   return label->text().toStdString() == text;
               });
    }

    std::unique_ptr<ArrangementsPage> page;
};

TEST_F(ArrangementsPageTest, SavesAndListsArrangements) {
    open();
    EXPECT_TRUE(shows("Every visible window of every app that isn't ignored."));
    EXPECT_TRUE(shows("Nothing saved yet. Set up your windows, then click Save."));
    EXPECT_EQ(shown<Chip>(*page).front()->text(), "0 arrangements");
    directory.installed = {{"com.editor", "<i>Editor</i>"}};
    EngineTest::open(editor, {0, 25, 960, 1055});
    click(control(*page, "Save current arrangement"));
    EXPECT_TRUE(shows("Saved “Arrangement 1” with 1 window."));
    EXPECT_TRUE(shows("1 window · <i>Editor</i>"));
    EXPECT_FALSE(shows("Nothing saved yet. Set up your windows, then click Save."));
    EXPECT_EQ(shown<Chip>(*page).front()->text(), "1 arrangement");
    EXPECT_EQ(field(0).text(), "Arrangement 1");
}

TEST_F(ArrangementsPageTest, TypingKeepsTheCaretAndStoresEveryEdit) {
    openWith({"Coding", "Writing"});
    auto& name = field(0);
    name.setFocus();
    name.setCursorPosition(3);
    QTest::keyClicks(&name, "xy");
    EXPECT_EQ(stored(0), "Codxying");
    EXPECT_EQ(name.cursorPosition(), 5);
    renameElsewhere(1, "Reading");
    EXPECT_EQ(field(1).text(), "Reading");
    EXPECT_EQ(&field(0), &name);
    EXPECT_EQ(name.cursorPosition(), 5);
    QTest::keyClick(&name, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(stored(0), "Coding") << "what was typed can be undone";

    name.selectAll();
    QTest::keyClick(&name, Qt::Key_Delete);
    EXPECT_EQ(stored(0), "");
    QInputMethodEvent composing(QStringLiteral("か"), {});
    QApplication::sendEvent(&name, &composing);
    renameElsewhere(1, "Drawing");
    QInputMethodEvent commit;
    commit.setCommitString(QStringLiteral("書"));
    QApplication::sendEvent(&name, &commit);
    EXPECT_EQ(stored(0), "書");

    auto* const text = QAccessible::queryAccessibleInterface(&name)->editableTextInterface();
    ASSERT_NE(text, nullptr);
    text->insertText(1, QStringLiteral("く"));
    EXPECT_EQ(stored(0), "書く") << "typed by assistive technology";

    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
    QApplication::sendEvent(&name, &escape);
    EXPECT_TRUE(escape.isAccepted()) << "it would close the window";
    EXPECT_FALSE(name.hasFocus());
}

TEST_F(ArrangementsPageTest, ANameChangedElsewhereShowsAtOnceAndLeavesTheCaretNearby) {
    openWith({"My coding desk"});
    auto& name = field(0);
    name.setFocus();
    name.setCursorPosition(10);  // before "desk"
    renameElsewhere(0, "My old coding desk");
    EXPECT_EQ(name.text(), "My old coding desk");
    EXPECT_EQ(name.cursorPosition(), 14);
    name.setSelection(18, -4);  // backwards over "desk"
    renameElsewhere(0, "Coding desk");
    EXPECT_EQ(name.selectedText(), "desk");
    EXPECT_EQ(name.cursorPosition(), 7);
    renameElsewhere(0, "");
    EXPECT_EQ(name.cursorPosition(), 0);
    for (const auto* const emoji : {"😀", "😁", "🐁"}) {  // the same first half, the same second one
        renameElsewhere(0, emoji);
        EXPECT_NE(name.cursorPosition(), 1) << "inside of " << emoji;
        name.setCursorPosition(2);
    }
    EXPECT_EQ(name.placeholderText(), "Name");
}

TEST_F(ArrangementsPageTest, DeletingByKeyboardPassesTheFocusOn) {
    openWith({"One", "Two", "Three"});
    auto& button = control(*page, "Delete Two");
    button.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&button, Qt::Key_Space);
    settle();
    EXPECT_EQ(focused(), "Delete Three");
    QTest::keyClick(page->focusWidget(), Qt::Key_Space);
    settle();
    EXPECT_EQ(focused(), "Delete One") << "the last one has none behind it";
    QTest::keyClick(page->focusWidget(), Qt::Key_Space);
    settle();
    EXPECT_EQ(focused(), "Save current arrangement");
    EXPECT_TRUE(store.load().empty());
    EXPECT_TRUE(shown<ArrangementRow>(*page).empty());
}

TEST_F(ArrangementsPageTest, DeletingEndsARecording) {
    openWith({"One", "Two"});
    click(*shown<ShortcutRecorder>(*page)[0]);
    ASSERT_TRUE(recorder.target());
    click(control(*page, "Delete Two"));
    EXPECT_FALSE(recorder.target());
    EXPECT_FALSE(hotkeys.recordingPause());
}

TEST_F(ArrangementsPageTest, TellsAboutARecordingBelowItsRow) {
    openWith({"One", "Two"});
    const auto height = page->sizeHint().height();
    click(*shown<ShortcutRecorder>(*page)[1]);
    EXPECT_EQ(page->sizeHint().height(), height);
    KeyEvent event;
    event.keyCode = 123;
    desktop_.eventMonitors().type(event);
    EXPECT_TRUE(shows("Add ⌃, ⌥ or ⌘ so it doesn't clash with typing."));
    event.modifiers = modifier_flag::control | modifier_flag::option;
    desktop_.eventMonitors().type(event);
    EXPECT_TRUE(shows("Moved from “Left half”."));
    const auto rows = shown<ArrangementRow>(*page);
    EXPECT_GT(rows[1]->sizeHint().height(), rows[0]->sizeHint().height());
    click(*shown<ShortcutRecorder>(*page)[1]);
    EXPECT_EQ(page->sizeHint().height(), height);
}

TEST_F(ArrangementsPageTest, AppliesTheArrangementOfTheRow) {
    const auto window = EngineTest::open(editor, {300, 300, 400, 300});
    openWith({"Left"});
    click(control(*page, "Apply Left"));
    EXPECT_EQ(at(window).frame.x, 8);
}

TEST_F(ArrangementsPageTest, ControlsAreNamedApartAndVisitedRowByRow) {
    openWith({"Desk", "Desk", ""});
    auto list = store.load();
    std::swap(list[0], list[2]);
    list.insert(list.begin(), arrangementOf("New", {}));
    store.save(list);
    settle();
    std::vector<std::string> visited;
    control(*page, "Save current arrangement").setFocus(Qt::TabFocusReason);
    for (int i = 0; i < 16; ++i) {
        QTest::keyClick(page->focusWidget(), Qt::Key_Tab);
        visited.push_back(focused());
    }
    EXPECT_EQ(visited, (std::vector<std::string>{
                           "Name of arrangement 1", "New, no shortcut", "Apply New", "Delete New",
                           "Name of arrangement 2", "arrangement 2, no shortcut",
                           "Apply arrangement 2", "Delete arrangement 2", "Name of arrangement 3",
                           "Desk, arrangement 3, no shortcut", "Apply Desk, arrangement 3",
                           "Delete Desk, arrangement 3", "Name of arrangement 4",
                           "Desk, arrangement 4, no shortcut", "Apply Desk, arrangement 4",
                           "Delete Desk, arrangement 4"}));
    renameElsewhere(1, "Home");
    EXPECT_NO_THROW(control(*page, "Home, no shortcut"));
}

TEST_F(ArrangementsPageTest, ManyArrangementsWithLongNamesFit) {
    std::vector<Arrangement> list;
    for (int i = 0; i < 40; ++i) {
        list.push_back(arrangementOf(std::string(200, 'W'),
                                     std::vector<std::string>(12, std::string(80, 'w'))));
        list.back().combo = KeyCombo{200 + i, modifier_flag::all, "A key with quite a long label"};
        hotKeyCenter.holdByOthers(200 + static_cast<std::uint32_t>(i), 0x1B00);
    }
    store.save(list);
    hotkeys.registerHotkeys();
    open();
    EXPECT_LE(page->minimumSizeHint().width(), pageSize.width());
    for (const auto* const row : shown<ArrangementRow>(*page)) {
        EXPECT_EQ(row->width(), pageSize.width());
        EXPECT_GE(row->controls()[0]->width(), 90) << "the name can still be read and typed";
    }
    EXPECT_EQ(field(39).cursorPosition(), 0) << "names are shown from their beginning";
}

}  // namespace
}  // namespace tessellon
