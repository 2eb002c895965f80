// The window of the updates as it is drawn, clicked and typed into, with the whole updater behind
// it; on Qt's platform without a display.
#include "updates/update_view.h"

#include "fakes/widgets.h"
#include "platform/memory/manual_run_loop.h"
#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_feed_source.h"
#include "platform/memory/memory_user_defaults.h"
#include "ui/palette.h"
#include "ui/pill_button.h"
#include "ui/pill_toggle.h"
#include "ui/ui_fixture.h"
#include "updates/feed_updater.h"
#include "updates/qt_update_views.h"

#include <QAccessible>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <algorithm>
#include <string>
#include <vector>

namespace tessellon {
namespace {

std::string feedWithNotes(const std::string& notes) {
    return R"({"version": "1.4.0", "page": "https://example.org/new", "notes": ")" + notes + "\"}";
}

class UpdateViewTest : public UiTest {
  protected:
    /// The window, else null.
    static QWidget* window() {
        const auto windows = QApplication::topLevelWidgets();
        const auto found = std::ranges::find_if(
            windows, [](const QWidget* each) { return each->isVisible() && !each->parent(); });
        return found != windows.end() ? *found : nullptr;
    }
    static UpdateView& view() { return *all<UpdateView>(*window()).front(); }

    /// What can be read in the window, top to bottom.
    static QStringList texts() {
        QStringList found;
        for (const auto* label : shown<QLabel>(*window())) {
            found << label->text();
        }
        return found;
    }

    static PillButton* button(const QString& text) {
        return findNamed(shown<PillButton>(*window()), text.toStdString());
    }

    static void click(const QString& text) {
        ASSERT_NE(button(text), nullptr) << text.toStdString();
        QTest::mouseClick(button(text), Qt::LeftButton);
    }

    static QPlainTextEdit& notes() { return *all<QPlainTextEdit>(*window()).front(); }
    static PillToggle& choice() { return *all<PillToggle>(*window()).front(); }

    void showUpdate(const std::string& text = "") {
        updater.checkForUpdates();
        source.answer(feedWithNotes(text));
        ASSERT_NE(window(), nullptr);
    }

    std::vector<QUrl> opened;
    bool opens = true;
    ManualRunLoop loop;
    MemoryFeedSource source;
    MemoryUserDefaults defaults;
    MemoryDesktop desktop;
    QtUpdateViews views{desktop.displays(), [this](const QUrl& url) {
                            opened.push_back(url);
                            return opens;
                        }};
    FeedUpdater updater{
        {source, views, defaults, loop, [] { return std::chrono::system_clock::time_point(); }},
        Version::parse("1.3").value(),
        "https://example.org/feed"};
};

TEST_F(UpdateViewTest, ShowsTheCheckAndItsResults) {
    updater.checkForUpdates();
    ASSERT_NE(window(), nullptr);
    EXPECT_EQ(window()->windowTitle(), "Tessellon Updates");
    EXPECT_EQ(texts().front(), "Checking…");
    EXPECT_FALSE(button("Try again") || button("Open page"));

    source.fail(FeedError::unreachable);
    EXPECT_EQ(texts().value(1).toStdString(), describe({FeedError::unreachable, 0}));
    click("Try again");
    EXPECT_EQ(texts().front(), "Checking…");
    EXPECT_TRUE(source.isFetching());

    source.answer(R"({"version": "1.3", "page": "https://example.org"})");
    EXPECT_EQ(texts().front(), "Tessellon is up to date");
    EXPECT_FALSE(button("Try again") || button("Open page"));
    EXPECT_TRUE(opened.empty());
}

TEST_F(UpdateViewTest, WithoutAFeedThereIsNothingToChoose) {
    FeedUpdater bare(
        {source, views, defaults, loop, [] { return std::chrono::system_clock::time_point(); }},
        Version::parse("1.3").value(), "");
    bare.checkForUpdates();
    EXPECT_EQ(texts().front(), "No update feed");
    EXPECT_FALSE(choice().isVisible());
    click("Close");
    EXPECT_EQ(window(), nullptr);
}

TEST_F(UpdateViewTest, ThePageOpensByAClickOnly) {
    showUpdate();
    EXPECT_EQ(texts().front(), "Tessellon 1.4.0 is available");
    EXPECT_TRUE(opened.empty());
    click("Open page");
    EXPECT_EQ(opened, std::vector<QUrl>{QUrl("https://example.org/new")});
    ASSERT_NE(window(), nullptr);
    opens = false;
    click("Open page");
    EXPECT_TRUE(texts().value(1).contains("https://example.org/new")) << "to be copied";
}

TEST_F(UpdateViewTest, NotesAreTextOfLimitedHeight) {
    showUpdate();
    EXPECT_FALSE(notes().isVisible());
    showUpdate("<b>bold</b> &amp;");
    ASSERT_TRUE(notes().isVisible());
    EXPECT_EQ(notes().toPlainText(), "<b>bold</b> &amp;");
    const int small = window()->sizeHint().height();
    EXPECT_FALSE(notes().focusPolicy() & Qt::TabFocus) << "nothing to scroll";

    std::string many;
    for (int i = 0; i < 300; ++i) {
        many += "line " + std::to_string(i) + "\\n";
    }
    showUpdate(many);
    EXPECT_LT(window()->sizeHint().height(), small + 200);
    EXPECT_EQ(window()->minimumSize(), window()->maximumSize()) << "nobody resizes it";
    notes().setFocus();
    QTest::keyClick(&notes(), Qt::Key_PageDown);
    EXPECT_GT(notes().verticalScrollBar()->value(), 0);
    QTest::keyClick(&notes(), Qt::Key_Tab);
    EXPECT_NE(window()->focusWidget(), &notes());
    EXPECT_EQ(window()->focusWidget(), &choice());
}

TEST_F(UpdateViewTest, TheToggleIsTheUpdatersChoice) {
    showUpdate();
    EXPECT_FALSE(choice().isChecked());
    QTest::mouseClick(&choice(), Qt::LeftButton);
    EXPECT_TRUE(updater.automaticallyChecksForUpdates());
    updater.setAutomaticallyChecksForUpdates(false);
    EXPECT_FALSE(choice().isChecked()) << "changed elsewhere";
}

TEST_F(UpdateViewTest, EveryWayOfClosingEndsACheck) {
    const std::function<void()> ways[] = {
        [] { click("Close"); }, [] { QTest::keyClick(window(), Qt::Key_Escape); },
        [] { window()->close(); },
        [] { QTest::keyClick(window()->focusWidget(), Qt::Key_Return); }};
    for (const auto& way : ways) {
        updater.checkForUpdates();
        ASSERT_NE(window(), nullptr);
        EXPECT_TRUE(source.isFetching());
        way();
        EXPECT_EQ(window(), nullptr);
        QCoreApplication::processEvents();
        EXPECT_FALSE(source.isFetching());
        EXPECT_TRUE(QApplication::topLevelWidgets().empty());
    }
    showUpdate();
    notes().setFocus();
    QTest::keyClick(&notes(), Qt::Key_Escape);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(UpdateViewTest, OnlyWhatTheUserAskedForTakesTheKeyboard) {
    updater.setAutomaticallyChecksForUpdates(true);
    updater.start();
    loop.advance(FeedUpdater::firstCheckDelay);
    source.answer(feedWithNotes(""));
    ASSERT_NE(window(), nullptr);
    EXPECT_TRUE(window()->testAttribute(Qt::WA_ShowWithoutActivating));
    updater.checkForUpdates();
    EXPECT_FALSE(window()->testAttribute(Qt::WA_ShowWithoutActivating));
    EXPECT_TRUE(QTest::qWaitForWindowActive(window()));
    EXPECT_EQ(window()->focusWidget(), button("Close"));
    source.answer(feedWithNotes(""));
    EXPECT_EQ(window()->focusWidget(), button("Open page"));
}

TEST_F(UpdateViewTest, AssistiveTechnologyHearsTheResult) {
    showUpdate("New things");
    const auto name = [](QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name);
    };
    EXPECT_EQ(name(&notes()), "What is new");
    EXPECT_EQ(name(&choice()), "Check once a day");
    EXPECT_EQ(name(button("Open page")), "Open page");
    EXPECT_EQ(name(&view()), "Tessellon 1.4.0 is available");
}

TEST_F(UpdateViewTest, ButtonsShowTheirRankAndThePointer) {
    PillButton primary("Go", PillButtonStyle::primary);
    PillButton quiet("Stay", PillButtonStyle::quiet);
    for (auto* const each : {&primary, &quiet}) {
        each->resize(each->sizeHint());
        const auto image = drawn(*each);
        const auto fill = each == &primary ? palette::amber : palette::paper;
        EXPECT_TRUE(shows(image, 12, 17, fill));
        EXPECT_TRUE(shows(image, each->width() / 2, 0, palette::ink));
        EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
        each->setDown(true);
        EXPECT_FALSE(shows(drawn(*each), 12, 17, fill));
        each->setDown(false);
        each->setEnabled(false);
        EXPECT_LT(drawn(*each).pixelColor(12, 17).alpha(), 140);
    }
    EXPECT_GT(PillButton("A long line of text", PillButtonStyle::quiet).sizeHint().width(),
              quiet.sizeHint().width());
    int presses = 0;
    primary.setEnabled(true);
    QObject::connect(&primary, &QAbstractButton::clicked, [&presses] { ++presses; });
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        QTest::keyClick(&primary, key);
    }
    EXPECT_EQ(presses, 3);
}

}  // namespace
}  // namespace tessellon
