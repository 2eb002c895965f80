// The page of the zone grid as it is drawn and used.
#include "settings/zones_page_view.h"

#include "settings/settings_view_fixture.h"
#include "ui/pill_button.h"
#include "ui/pill_toggle.h"

#include <memory>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

class ZonesPageTest : public SettingsViewTest {
  protected:
    ZonesPageTest() : page(std::make_unique<ZonesPage>(settings())) { show(*page, pageSize); }
    void seeIt() { click(control<PillButton>(*page, "See it")); }
    bool isPreviewShown() const { return dragViews != nullptr && dragViews->isPreviewShown(); }

    std::unique_ptr<ZonesPage> page;
};

TEST_F(ZonesPageTest, TellsOfTheGridAndSwitchesIt) {
    for (const auto* const text :
         {"Snap zones", "Hold ⌘ while dragging a window. A grid appears; let go on a zone to snap.",
          "Zone grid",
          "Plain drags move freely. Press or release ⌘ mid-drag to show or hide the grid.",
          "Behaviour", "⌘-drag to snap", "Show the zone grid while you hold ⌘ and drag a window.",
          "Show snap preview", "A soft teal outline shows where the window will land."}) {
        EXPECT_TRUE(says(*page, text)) << text;
    }
    auto& drag = control<PillToggle>(*page, "⌘-drag to snap");
    auto& preview = control<PillToggle>(*page, "Show snap preview");
    EXPECT_TRUE(drag.isChecked());
    click(drag);
    click(preview);
    EXPECT_FALSE(defaults_.boolForKey(preference::dragEnabled));
    EXPECT_FALSE(defaults_.boolForKey(preference::showPreview));
    defaults_.setBool(preference::showPreview, true);
    EXPECT_TRUE(preview.isChecked());
}

TEST_F(ZonesPageTest, DemonstratesThePreviewWhateverIsSwitchedOn) {
    defaults_.setBool(preference::dragEnabled, false);
    defaults_.setBool(preference::showPreview, false);
    seeIt();
    ASSERT_TRUE(isPreviewShown());
    EXPECT_EQ(dragViews->previews[0]->frame(), (Rect{8, 8, 948, 1039}));
    loop.advance(Seconds(1.5));
    EXPECT_FALSE(isPreviewShown());
}

TEST_F(ZonesPageTest, TheDemonstrationEndsWithThePage) {
    seeIt();
    page->hide();
    EXPECT_FALSE(isPreviewShown());
    page->show();
    seeIt();
    EXPECT_TRUE(isPreviewShown());
    page.reset();
    loop.advance(Seconds(2));  // nothing is left that would touch what is gone
}

TEST_F(ZonesPageTest, TheKeyboardReachesEverythingFromTopToBottom) {
    control<PillToggle>(*page, "⌘-drag to snap").setFocus();
    QTest::keyClick(page->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(nameOf(*page->focusWidget()), "See it");
    QTest::keyClick(page->focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(isPreviewShown());
    QTest::keyClick(page->focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(nameOf(*page->focusWidget()), "Show snap preview");
}

}  // namespace
}  // namespace tessellon
