// The welcome tour as it is drawn, clicked and typed into, on Qt's platform without a display.
#include "onboarding/onboarding_view.h"

#include "onboarding/face_tile_view.h"
#include "onboarding_fixture.h"
#include "ui/focus_ring.h"
#include "ui/palette.h"
#include "ui/pill_toggle.h"
#include "ui/ui_fixture.h"

#include <QAccessible>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <memory>

namespace tessellon {
namespace {

class OnboardingViewTest : public UiTest, protected Onboarding {
  protected:
    ~OnboardingViewTest() override { view.reset(); }

    void open(int step = 0) {
        view.reset();
        view = std::make_unique<OnboardingView>(start(step));
        view->resize(OnboardingView::contentSize);
        view->show();
        view->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(view.get()));
    }

    template <typename Control = QAbstractButton>
    Control* control(const QString& text) const {
        for (auto* const each : view->findChildren<QAbstractButton*>()) {
            const bool fits = each->text() == text || each->accessibleName() == text;
            if (fits && each->isVisible()) {
                return dynamic_cast<Control*>(each);
            }
        }
        return nullptr;
    }
    void click(const QString& text) const {
        ASSERT_NE(control(text), nullptr) << text.toStdString();
        QTest::mouseClick(control(text), Qt::LeftButton);
    }
    QStringList buttons() const {
        QStringList found;
        for (auto* const each : view->findChildren<QAbstractButton*>()) {
            if (each->isVisible() && !each->text().isEmpty()) {
                found << each->text();
            }
        }
        return found;
    }
    bool reads(const QString& text) const {
        for (const auto* const label : view->findChildren<QLabel*>()) {
            if (label->isVisible() && label->text() == text) {
                return true;
            }
        }
        return false;
    }
    QString focused() const {
        auto* const button = dynamic_cast<QAbstractButton*>(view->focusWidget());
        return button == nullptr          ? QString()
               : button->text().isEmpty() ? button->accessibleName()
                                          : button->text();
    }

    std::unique_ptr<OnboardingView> view;
};

TEST_F(OnboardingViewTest, TheButtonsLeadThroughTheSteps) {
    open();
    EXPECT_TRUE(reads("Welcome") && reads("Windows that snap into place.") && reads("Hi there!"));
    EXPECT_TRUE(reads("⌃⌥ shortcuts"));
    EXPECT_EQ(buttons(), QStringList{"Get started"});
    click("Get started");
    EXPECT_TRUE(reads("Step 2 of 4") && reads("Let Tessellon move your windows"));
    EXPECT_EQ(buttons(), (QStringList{"Back", "Continue"}));
    click("Continue");
    EXPECT_TRUE(reads("Step 3 of 4") && reads("Give it a spin"));
    EXPECT_EQ(buttons(), (QStringList{"Back", "Skip", "Continue"}));
    click("Skip");
    EXPECT_TRUE(reads("Step 4 of 4") && reads("Tessellon lives up here"));
    EXPECT_EQ(buttons(), (QStringList{"Back", "Finish"}));
    for (int i = 0; i < 3; ++i) {
        click("Back");
    }
    EXPECT_TRUE(reads("Welcome"));
    model->goTo(3);
    EXPECT_EQ(finished, 0);
    click("Finish");
    EXPECT_EQ(finished, 1);
}

TEST_F(OnboardingViewTest, ContinuesOnlyWithThePermission) {
    desktop.setTrusted(false);
    open(1);
    EXPECT_TRUE(reads("May we?") && reads("Waiting for permission…"));
    EXPECT_FALSE(control("Continue")->isEnabled());
    EXPECT_EQ(focused(), "Open System Settings");
    click("Open System Settings");
    EXPECT_EQ(desktop.trustRequests(), 1);
    EXPECT_TRUE(reads("Start a window manager."));
    click("Continue");
    EXPECT_EQ(model->step(), 1);

    desktop.setTrusted(true);
    passTime();
    EXPECT_TRUE(reads("Thank you!") && reads("Granted ✓"));
    EXPECT_FALSE(reads("Start a window manager.") || control("Open System Settings"));
    EXPECT_EQ(focused(), "Continue") << "its button has gone";
    click("Continue");
    EXPECT_EQ(model->step(), 2);
}

TEST_F(OnboardingViewTest, TasksAreTickedOff) {
    open(0);
    happens(Tour::Event::shortcut);
    model->goTo(2);
    const auto pills = [this] {
        QStringList found;
        for (const auto* const label : view->findChildren<QLabel*>()) {
            for (const auto* const text : {"Done", "Try it now", "Up next"}) {
                if (label->text() == text) {
                    found << text;
                }
            }
        }
        return found;
    };
    EXPECT_EQ(pills(), (QStringList{"Done", "Try it now", "Up next"}));
    EXPECT_TRUE(reads("Nice!"));
    happens(Tour::Event::launcher);
    EXPECT_EQ(pills(), (QStringList{"Done", "Try it now", "Done"}));
    happens(Tour::Event::drag);
    EXPECT_EQ(pills(), (QStringList{"Done", "Done", "Done"}));
}

TEST_F(OnboardingViewTest, OffersOtherShortcutsWhereTheFirstIsTaken) {
    registerHotkeys();
    open(2);
    EXPECT_FALSE(control("Use ⌃⌘ instead of ⌃⌥"));
    hold(SnapAction::leftHalf);
    EXPECT_TRUE(reads("Press ⌃⌥→ to snap right"));
    EXPECT_TRUE(reads("Another program holds ⌃⌥← here."));
    click("Use ⌃⌘ instead of ⌃⌥");
    EXPECT_TRUE(reads("Press ⌃⌘← to snap left") && reads("Any ⌃⌘ shortcut counts."));
    EXPECT_FALSE(control("Use ⌃⌘ instead of ⌃⌥"));
    EXPECT_EQ(focused(), "Continue");
    model->goTo(0);
    EXPECT_TRUE(reads("⌃⌘ shortcuts"));
}

TEST_F(OnboardingViewTest, SwitchesAreTheSettings) {
    open(3);
    click("⌘-drag to snap");
    click("Show snap preview");
    EXPECT_FALSE(defaults.boolForKey(preference::dragEnabled));
    EXPECT_FALSE(defaults.boolForKey(preference::showPreview));
    defaults.setBool(preference::showPreview, true);
    EXPECT_TRUE(control("Show snap preview")->isChecked()) << "changed elsewhere";

    loginItem.setProblem("The disk is full.");
    click("Launch at login");
    EXPECT_FALSE(control("Launch at login")->isChecked());
    EXPECT_TRUE(reads("The disk is full."));
    loginItem.setProblem({});
    click("Launch at login");
    EXPECT_TRUE(control("Launch at login")->isChecked());
    EXPECT_FALSE(reads("The disk is full."));
    EXPECT_EQ(loginItem.status(), LoginItemStatus::enabled);
}

TEST_F(OnboardingViewTest, WorksByKeyboardAlone) {
    open();
    const auto type = [this](Qt::Key key) {
        QTest::keyClick(view->focusWidget() != nullptr ? view->focusWidget() : view.get(), key);
    };
    EXPECT_EQ(focused(), "Get started");
    type(Qt::Key_Return);
    EXPECT_EQ(model->step(), 1);
    EXPECT_EQ(focused(), "Continue");
    type(Qt::Key_Return);
    EXPECT_EQ(focused(), "Continue");
    model->goTo(3);
    QStringList order;
    for (int i = 0; i < 5; ++i) {
        type(Qt::Key_Tab);
        order << focused();
    }
    EXPECT_EQ(order, (QStringList{"Launch at login", "⌘-drag to snap", "Show snap preview", "Back",
                                  "Finish"}));
    view->focusWidget()->clearFocus();
    happens(Tour::Event::drag);
    EXPECT_EQ(focused(), "") << "nothing here has changed";
    type(Qt::Key_Return);
    EXPECT_EQ(finished, 1) << "the primary button is the default one";
    type(Qt::Key_Return);
    EXPECT_EQ(finished, 1) << "and the tour is over";
    control("Back")->setFocus();
    type(Qt::Key_Return);
    EXPECT_EQ(model->step(), 2) << "unless another one has the focus";
    control("Skip")->setFocus();
    type(Qt::Key_Space);
    EXPECT_EQ(focused(), "Finish") << "what had the focus has gone";
}

TEST_F(OnboardingViewTest, TheFocusIsSeenAfterKeysOnly) {
    open(2);
    const auto hasRing = [this](const QString& text) {
        const auto* const button = control(text);
        const QPoint beside(-FocusRing::reach + 1, button->height() / 2);
        const auto at = button->mapTo(view.get(), beside);
        return shows(view->grab().toImage(), at.x(), at.y(), palette::ink);
    };
    EXPECT_FALSE(hasRing("Continue"));
    click("Skip");
    EXPECT_EQ(focused(), "Finish");
    EXPECT_FALSE(hasRing("Finish"));
    QTest::keyClick(view->focusWidget(), Qt::Key_Backtab);
    EXPECT_TRUE(hasRing("Back"));
    QTest::keyClick(view->focusWidget(), Qt::Key_Space);
    EXPECT_EQ(model->step(), 2);
    EXPECT_TRUE(hasRing("Continue"));
}

TEST_F(OnboardingViewTest, AssistiveTechnologyReadsEveryStep) {
    const auto name = [](QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    };
    open();
    EXPECT_EQ(name(view.get()), "Welcome: Windows that snap into place.");
    for (auto* const widget : view->findChildren<QWidget*>()) {
        if (dynamic_cast<FaceTile*>(widget) != nullptr) {
            EXPECT_EQ(name(widget), "") << "only decoration";
        }
    }
    model->goTo(2);
    EXPECT_EQ(name(view.get()), "Step 3 of 4: Give it a spin");
    EXPECT_TRUE(control("Continue")->accessibleDescription().startsWith("Step 3 of 4"));
    happens(Tour::Event::drag);
    QStringList rows;
    for (auto* const widget : view->findChildren<QWidget*>()) {
        auto* const interface = QAccessible::queryAccessibleInterface(widget);
        if (interface->role() == QAccessible::ListItem) {
            rows << interface->text(QAccessible::Name);
        }
    }
    EXPECT_EQ(rows, (QStringList{"1. Press Control Alt Left Arrow to snap left. Try it now",
                                 "2. Hold Super and drag a window. Done",
                                 "3. Press right Super + / for the launcher. Up next"}));
}

TEST_F(OnboardingViewTest, TheStepScrollsWhereTheWindowIsLow) {
    desktop.setTrusted(false);
    for (int step = 0; step < OnboardingModel::stepCount; ++step) {
        open(step);
        auto* const bar = view->findChild<QScrollArea*>()->verticalScrollBar();
        EXPECT_EQ(bar->maximum(), 0) << "all of step " << step << " is to be seen";
        view->resize(640, 360);
        QCoreApplication::processEvents();
        EXPECT_GT(bar->maximum(), 0);
        auto* const next = control(step == 3 ? "Finish" : step == 0 ? "Get started" : "Continue");
        EXPECT_TRUE(view->rect().contains(next->geometry().translated(next->parentWidget()->pos())))
            << "the bar stays";
        QTest::keyClick(view.get(), Qt::Key_End);
        EXPECT_EQ(bar->value(), bar->maximum());
    }
}

TEST_F(OnboardingViewTest, NothingIsWatchedOnceItIsHidden) {
    desktop.setTrusted(false);
    open(1);
    view->hide();
    desktop.setTrusted(true);
    passTime();
    EXPECT_FALSE(model->trusted());
}

}  // namespace
}  // namespace tessellon
