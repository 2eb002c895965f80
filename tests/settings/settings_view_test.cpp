#include "settings/settings_view.h"

#include "settings/about_page_view.h"
#include "settings/general_page_view.h"
#include "settings/rules_page_view.h"
#include "settings/settings_view_fixture.h"
#include "settings/sidebar_item_view.h"
#include "ui/dot.h"
#include "ui/palette.h"
#include "ui/pill_slider.h"
#include "ui/pill_toggle.h"

#include <QScrollArea>
#include <QScrollBar>
#include <QWheelEvent>
#include <any>
#include <optional>

namespace tessellon {
namespace {

using Page = SettingsPage;

class SettingsWindowTest : public SettingsViewTest {
  protected:
    void open(Page page = Page::general) {
        view.reset();
        view.emplace(settings(), page);
        show(*view, SettingsView::contentSize);
    }
    SidebarItem& item(Page page) { return control<SidebarItem>(*view, std::string(title(page))); }
    /// The page that is marked in the sidebar, while only one is.
    std::optional<Page> marked() {
        std::optional<Page> found;
        for (const auto* const each : shown<SidebarItem>(*view)) {
            if (each->isChecked()) {
                if (found) {
                    return std::nullopt;
                }
                found = each->page();
            }
        }
        return found;
    }
    template <typename Shown>
    bool shows() {
        return !shown<Shown>(*view).empty();
    }
    QScrollArea& scroll() {
        for (auto* const area : shown<QScrollArea>(*view)) {
            if (!shown<GeneralPage>(*area).empty()) {
                return *area;
            }
        }
        throw std::runtime_error("the page does not scroll");
    }
    static QWidget& focused() {
        auto* const widget = QApplication::focusWidget();
        return widget != nullptr ? *widget : throw std::runtime_error("nothing has the keyboard");
    }
    static void type(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&focused(), key, modifiers);
        settle();
    }

    std::optional<SettingsView> view;
};

TEST_F(SettingsWindowTest, ListsThePagesAndShowsTheOneThatIsChosen) {
    open(Page::about);
    EXPECT_EQ(shown<SidebarItem>(*view).size(), allSettingsPages.size());
    EXPECT_EQ(marked(), Page::about);
    EXPECT_TRUE(shows<AboutPage>());
    click(item(Page::general));
    EXPECT_EQ(view->page(), Page::general);
    EXPECT_EQ(marked(), Page::general);
    EXPECT_TRUE(shows<GeneralPage>());
    EXPECT_FALSE(shows<AboutPage>());
    auto& gap = control<PillSlider>(*view, "Gap between windows");
    click(item(Page::general));
    notifications.post(notification::settingsSelect, std::any(Page::general));
    settle();
    EXPECT_EQ(marked(), Page::general);
    EXPECT_EQ(&control<PillSlider>(*view, "Gap between windows"), &gap) << "it was shown already";
}

TEST_F(SettingsWindowTest, APageIsReadAnewWhenTheWindowIsOpenedAgain) {
    open();
    const auto isOn = [&] { return control<PillToggle>(*view, "Launch at login").isChecked(); };
    loginItem.setStatus(LoginItemStatus::enabled);
    view->hide();
    view->show();
    settle();
    EXPECT_TRUE(isOn());
}

TEST_F(SettingsWindowTest, AnotherPageCanBeSelectedFromOutside) {
    open();
    notifications.post(notification::settingsSelect, std::any(Page::rules));
    settle();
    EXPECT_EQ(view->page(), Page::rules);
    EXPECT_EQ(marked(), Page::rules);
    EXPECT_TRUE(shows<RulesPage>());
    notifications.post(notification::settingsSelect, {});
    EXPECT_EQ(view->page(), Page::rules);
    view.reset();
    notifications.post(notification::settingsSelect, std::any(Page::general));
}

TEST_F(SettingsWindowTest, TheCardFollowsThePause) {
    open();
    EXPECT_TRUE(says(*view, "Snapping is on"));
    EXPECT_TRUE(says(*view, "Hold ⌘ and drag a window, or press ⌃⌥ + a key."));
    const auto& dot = *shown<Dot>(*view).at(0);
    EXPECT_EQ(dot.color(), palette::teal);
    defaults_.setBool(preference::paused, true);
    EXPECT_TRUE(says(*view, "Snapping is paused"));
    EXPECT_TRUE(says(*view, "Turn it back on from the menu bar."));
    EXPECT_EQ(dot.color(), palette::coral);
}

TEST_F(SettingsWindowTest, TheRulesItemCountsTheApplications) {
    open();
    EXPECT_EQ(item(Page::rules).countText(), "0");
    defaults_.edit(preference::ignored, PropertyValue(std::string("com.one\n\n com.two ")));
    EXPECT_EQ(item(Page::rules).countText(), "2");
    EXPECT_EQ(item(Page::rules).accessibleDescription(), "2 apps");
    EXPECT_EQ(item(Page::displays).countText(), "");
}

TEST_F(SettingsWindowTest, ARecordingOutlivesItsPageAndEndsWithTheWindow) {
    const auto record = [this] {
        open(Page::shortcuts);
        click(control(*view, "Left half, Control Alt Left Arrow"));
        click(item(Page::about));
        EXPECT_EQ(recorder.target(), HotkeyTarget::snap(SnapAction::leftHalf));
    };
    record();
    click(item(Page::shortcuts));
    EXPECT_NO_THROW(control(*view, "Left half, Press new keys…"));
    click(item(Page::about));
    view->hide();
    EXPECT_FALSE(recorder.target());

    record();
    QWidget elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    settle();
    EXPECT_FALSE(recorder.target());
}

TEST_F(SettingsWindowTest, ArrowsGoThroughTheSidebarAndTabGoesOnToThePage) {
    open();
    type(Qt::Key_Tab);
    item(Page::general).setFocus(Qt::TabFocusReason);
    type(Qt::Key_Up);
    EXPECT_EQ(view->page(), Page::general);
    type(Qt::Key_End);
    EXPECT_EQ(view->page(), Page::about);
    for (const auto page : {Page::displays, Page::rules}) {
        type(Qt::Key_Up);
        EXPECT_EQ(view->page(), page);
        EXPECT_EQ(&focused(), &item(page));
    }
    type(Qt::Key_Home);
    EXPECT_EQ(view->page(), Page::general);
    type(Qt::Key_Tab);
    EXPECT_EQ(nameOf(focused()), "Launch at login");
    type(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(view->page(), Page::zones);
    EXPECT_EQ(&focused(), &item(Page::zones)) << "what had the keyboard is gone";
    type(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(&focused(), &item(Page::shortcuts));
    type(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(&focused(), &item(Page::zones));
    QTest::keyClick(&focused(), Qt::Key_PageUp, Qt::ControlModifier);
    QTest::keyClick(&focused(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(view->page(), Page::about);
}

TEST_F(SettingsWindowTest, WhatGetsTheKeyboardIsBroughtIntoView) {
    defaults_.setBool(preference::tilingEnabled, true);
    open();
    view->resize(900, 420);
    settle();
    auto& area = scroll();
    item(Page::general).setFocus(Qt::TabFocusReason);
    int controls = 0;
    for (type(Qt::Key_Tab); area.isAncestorOf(&focused()); type(Qt::Key_Tab)) {
        ++controls;
        const QRect frame(focused().mapTo(&area, QPoint(0, 0)), focused().size());
        EXPECT_TRUE(area.rect().contains(frame)) << nameOf(focused());
    }
    EXPECT_EQ(controls, 9);
    EXPECT_GT(area.verticalScrollBar()->value(), 0);
    view->setPage(Page::zones);
    settle();
    EXPECT_EQ(area.verticalScrollBar()->value(), 0);
}

TEST_F(SettingsWindowTest, TheWheelGoesOnFromASliderToThePage) {
    open();
    auto& slider = control<PillSlider>(*view, "Gap between windows");
    const QPointF middle = slider.rect().center();
    QWheelEvent wheel(middle, slider.mapToGlobal(middle), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, /*inverted=*/false);
    QApplication::sendEvent(&slider, &wheel);
    EXPECT_FALSE(wheel.isAccepted());
    EXPECT_EQ(defaults_.doubleForKey(preference::gap), 8);
}

TEST_F(SettingsWindowTest, NothingIsWiderThanThePageInANarrowWindow) {
    defaults_.setBool(preference::tilingEnabled, true);
    open();
    view->resize(640, 400);
    settle();
    const auto& area = scroll();
    EXPECT_LE(area.widget()->width(), area.viewport()->width());
}

}  // namespace
}  // namespace tessellon
