#include "settings/rules_page_view.h"

#include "settings/application_chooser_view.h"
#include "settings/choosable_list_view.h"
#include "settings/settings_view_fixture.h"
#include "ui/pill_toggle.h"
#include "ui/text_field.h"
#include "ui/text_label.h"

#include <QKeyEvent>
#include <QScrollArea>
#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

class RulesPageTest : public SettingsViewTest {
  protected:
    RulesPageTest() {
        for (const auto* name : {"Browser", "Calculator", "Draw", "Notes"}) {
            directory.installed.push_back({std::string("org.example.") + name, name, ""});
        }
    }

    void setList(const std::string& text) { defaults_.setString(preference::ignored, text); }
    std::string list() const { return *defaults_.stringForKey(preference::ignored); }

    void showPage() {
        page = std::make_unique<RulesPage>(settings());
        show(*page, pageSize);
    }
    TextField& field() const { return control<TextField>(*page, "App to add"); }
    QAbstractButton& removal(const std::string& name) const {
        return control(*page, "Remove " + name);
    }
    bool isListed(const std::string& name) const {
        return findNamed(shown<QAbstractButton>(*page), "Remove " + name) != nullptr;
    }
    void press(Qt::Key key) const {
        QTest::keyClick(QApplication::focusWidget(), key);
        settle();
    }
    ApplicationChooser* chooser() const {
        const auto found = page->window()->findChildren<QDialog*>();
        return found.isEmpty() ? nullptr : dynamic_cast<ApplicationChooser*>(found.front());
    }
    ChoosableList& choosable() const { return *shown<ChoosableList>(*chooser()).front(); }
    void clickLine(int row) const {
        auto& view = choosable();
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {},
                          view.visualRect(view.model()->index(row, 0)).center());
        settle();
    }

    std::unique_ptr<RulesPage> page;
};

TEST_F(RulesPageTest, FollowsTheListWhileOneTypes) {
    showPage();
    EXPECT_TRUE(says(*page, "No apps yet. Everything snaps."));
    EXPECT_TRUE(says(*page, "0 apps"));
    QTest::keyClicks(&field(), "Notsx");
    field().setCursorPosition(3);
    setList("org.example.Draw\nelsewhere");
    settle();
    EXPECT_TRUE(says(*page, "2 apps"));
    EXPECT_FALSE(says(*page, "No apps yet. Everything snaps."));
    EXPECT_TRUE(isListed("Draw"));
    EXPECT_TRUE(isListed("elsewhere"));
    EXPECT_EQ(field().text(), "Notsx");
    EXPECT_EQ(field().cursorPosition(), 3);
}

TEST_F(RulesPageTest, AddsWhatIsTypedAndSaysWhatItCannotFind) {
    showPage();
    QTest::keyClicks(&field(), "Nots");
    QTest::keyClick(&field(), Qt::Key_Return);
    settle();
    const std::string error =
        "Couldn't find “Nots”. Try the exact app name, or leave the field empty and click Add app.";
    EXPECT_TRUE(says(*page, error));
    field().setText("Notes");
    click(control(*page, "Add app"));
    EXPECT_EQ(list(), "org.example.Notes");
    EXPECT_EQ(field().text(), "");
    EXPECT_FALSE(says(*page, error));
}

TEST_F(RulesPageTest, ARemovedPillPassesTheKeyboardOn) {
    setList("org.example.Browser\norg.example.Draw\norg.example.Notes");
    showPage();
    removal("Draw").setFocus(Qt::TabFocusReason);
    setList("org.example.Draw\nfirst\norg.example.Notes");
    settle();
    EXPECT_TRUE(removal("Draw").hasFocus()) << "it stayed";
    press(Qt::Key_Space);
    EXPECT_EQ(list(), "first\norg.example.Notes");
    EXPECT_TRUE(removal("first").hasFocus());
    press(Qt::Key_Tab);
    EXPECT_TRUE(removal("Notes").hasFocus());
    press(Qt::Key_Return);
    EXPECT_TRUE(removal("first").hasFocus());
    press(Qt::Key_Return);
    EXPECT_EQ(list(), "");
    EXPECT_TRUE(field().hasFocus());
}

TEST_F(RulesPageTest, TabGoesThroughOldAndNewPillsBeforeTheField) {
    setList("a");
    showPage();
    setList("new\na\nlast");
    settle();
    removal("new").setFocus(Qt::TabFocusReason);
    std::vector<std::string> order;
    for (int step = 0; step < 5; ++step) {
        press(Qt::Key_Tab);
        order.push_back(nameOf(*QApplication::focusWidget()));
    }
    EXPECT_EQ(order, (std::vector<std::string>{"Remove a", "Remove last", "App to add", "Add app",
                                               "Ignore small windows"}));
}

TEST_F(RulesPageTest, ManyAndLongNamesStayWithinThePage) {
    std::string text = "org.example." + std::string(300, 'x');
    for (int at = 0; at < 60; ++at) {
        text += "\nsome.program." + std::to_string(at);
    }
    setList(text);
    QScrollArea area;
    area.setWidgetResizable(true);
    area.setWidget(new RulesPage(settings()));
    show(area, pageSize);
    const auto& within = *area.widget();
    EXPECT_LE(within.width(), area.viewport()->width());
    const auto buttons = shown<QAbstractButton>(within);
    ASSERT_GE(buttons.size(), 63U);
    for (const auto* const button : buttons) {
        const QRect frame(button->mapTo(&within, QPoint(0, 0)), button->size());
        EXPECT_TRUE(within.rect().contains(frame)) << nameOf(*button);
    }
}

TEST_F(RulesPageTest, ShortNamesAreShownWholeBesideLongOnes) {
    showPage();
    setList("org.example.Browser\nsome.program\n" + std::string(300, 'x'));
    settle();
    for (const auto* name : {"Browser", "some.program"}) {
        const auto& pill = *removal(name).parentWidget();
        EXPECT_EQ(pill.width(), pill.sizeHint().width()) << name;
    }
}

TEST_F(RulesPageTest, EscapeEmptiesTheFieldBeforeItClosesTheWindow) {
    showPage();
    field().setFocus();
    QTest::keyClicks(&field(), QString(100, 'x'));
    press(Qt::Key_Return);
    const auto spoken = "Couldn't find “" + std::string(100, 'x') + "”.";
    EXPECT_TRUE(field().accessibleDescription().toStdString().starts_with(spoken));
    const auto labels = shown<TextLabel>(*page);
    EXPECT_TRUE(std::ranges::any_of(labels, [&](const auto* label) {
        return label->accessibleName().toStdString().starts_with(spoken);
    }));

    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, {});
    QApplication::sendEvent(&field(), &escape);
    EXPECT_EQ(field().text(), "");
    EXPECT_TRUE(escape.isAccepted());
    QApplication::sendEvent(&field(), &escape);
    EXPECT_FALSE(escape.isAccepted());
}

TEST_F(RulesPageTest, SmallWindowsFollowTheirKey) {
    showPage();
    auto& toggle = control<PillToggle>(*page, "Ignore small windows");
    EXPECT_TRUE(toggle.isChecked());
    click(toggle);
    EXPECT_FALSE(defaults_.boolForKey(preference::ignoreSmall));
}

TEST_F(RulesPageTest, AnEmptyFieldAsksForApplications) {
    setList("org.example.Browser");
    showPage();
    click(control(*page, "Add app"));
    ASSERT_NE(chooser(), nullptr);
    EXPECT_TRUE(chooser()->isVisible());
    EXPECT_EQ(chooser()->windowModality(), Qt::WindowModal);
    auto& add = control(*chooser(), "Add");
    EXPECT_FALSE(add.isEnabled());
    clickLine(0);
    EXPECT_FALSE(add.isEnabled()) << "it is ignored already";
    clickLine(3);
    clickLine(2);
    clickLine(1);
    clickLine(2);
    EXPECT_TRUE(says(*chooser(), "2 chosen"));
    click(add);
    EXPECT_EQ(list(), "org.example.Browser\norg.example.Calculator\norg.example.Notes");
    EXPECT_EQ(chooser(), nullptr);
}

TEST_F(RulesPageTest, ChoosesByKeyboard) {
    showPage();
    click(control(*page, "Add app"));
    ASSERT_NE(chooser(), nullptr);
    press(Qt::Key_Return);
    ASSERT_NE(chooser(), nullptr) << "nothing was meant";
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    // What is chosen stays so while something else is looked for.
    auto& search = control<TextField>(*chooser(), "Search applications");
    search.setFocus();
    QTest::keyClicks(&search, "EXAMPLE.n");
    EXPECT_EQ(choosable().lineCount(), 1);
    press(Qt::Key_Down);
    press(Qt::Key_Space);
    press(Qt::Key_Return);
    EXPECT_EQ(list(), "org.example.Calculator\norg.example.Notes");
    EXPECT_EQ(chooser(), nullptr);

    click(control(*page, "Add app"));
    QTest::keyClicks(QApplication::focusWidget(), "dra");
    press(Qt::Key_Return);
    EXPECT_EQ(list(), "org.example.Calculator\norg.example.Notes\norg.example.Draw");
    click(control(*page, "Add app"));
    QTest::keyClicks(QApplication::focusWidget(), "nothing like it");
    EXPECT_TRUE(says(*chooser(), "No application matches."));
    press(Qt::Key_Return);
    EXPECT_NE(chooser(), nullptr);
    press(Qt::Key_Escape);
    EXPECT_EQ(chooser(), nullptr);
}

TEST_F(RulesPageTest, TheQuestionGoesWithThePage) {
    QWidget window;
    show(window, pageSize);
    for (const bool isDeleted : {false, true}) {
        auto* const inside = new RulesPage(settings(), &window);
        inside->show();
        click(control(*inside, "Add app"));
        ASSERT_EQ(window.findChildren<QDialog*>().size(), 1);
        if (isDeleted) {
            delete inside;
        } else {
            inside->hide();
        }
        settle();
        EXPECT_TRUE(window.findChildren<QDialog*>().isEmpty());
    }
}

}  // namespace
}  // namespace tessellon
