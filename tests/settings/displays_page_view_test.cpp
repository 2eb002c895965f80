// The page of the displays as it is drawn and used.
#include "settings/displays_page_view.h"

#include "settings/display_card_view.h"
#include "settings/elided_label_view.h"
#include "settings/settings_view_fixture.h"
#include "ui/chip.h"
#include "ui/pill_toggle.h"
#include "ui/slider_row.h"

#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

class DisplaysPageTest : public SettingsViewTest {
  protected:
    DisplaysPageTest() {
        desktop_.setScreens({screen(1, {0, 0, 1920, 1080}, {0, 0, 1920, 1055}, "UUID"),
                             screen(2, {-1280, 0, 1280, 800}, {-1280, 0, 1280, 800})});
    }
    static std::vector<DisplayCard*> cards(const QWidget& page) { return shown<DisplayCard>(page); }
    static PillToggle& toggle(const QWidget& card) {
        return control<PillToggle>(card, "Own edge gap");
    }
    static std::vector<SliderRow*> sliders(const QWidget& card) { return shown<SliderRow>(card); }
};

TEST_F(DisplaysPageTest, ShowsACardForEachDisplay) {
    DisplaysPage page(settings());
    show(page, pageSize);
    EXPECT_TRUE(
        says(page, "Every screen Tessellon can snap to, in next / previous display order."));
    EXPECT_TRUE(says(page,
                     "Next display (⌃⌥⌘→) moves a window down this list; previous display (⌃⌥⌘←) "
                     "moves it up."));
    const auto displays = cards(page);
    ASSERT_EQ(displays.size(), 2U);
    EXPECT_LT(displays[0]->geometry().bottom(), displays[1]->geometry().top());
    EXPECT_EQ(displays[0]->accessibleName(), "Screen 2");
    EXPECT_TRUE(says(*displays[0], "1280 × 800 · looks like 1280 × 800"));
    EXPECT_FALSE(says(*displays[0], "Main"));
    EXPECT_EQ(shown<ElidedLabel>(*displays[1]).at(0)->text(), "Screen 1");
    EXPECT_TRUE(says(*displays[1], "Main"));
    EXPECT_TRUE(sliders(page).empty());
}

TEST_F(DisplaysPageTest, AnOwnGapIsSetWhereItIsTurnedOn) {
    DisplaysPage page(settings());
    show(page, pageSize);
    auto& card = *cards(page)[1];
    defaults_.setDouble(preference::padding, 12);
    click(toggle(card));
    ASSERT_EQ(sliders(card).size(), 1U);
    EXPECT_TRUE(sliders(*cards(page)[0]).empty());
    EXPECT_TRUE(says(card, "Gap at this display's edges"));
    EXPECT_TRUE(says(card, "Used instead of the gap in General."));
    EXPECT_TRUE(says(card, "12 px"));

    sliders(card)[0]->slider().choose(31);
    EXPECT_EQ(displayPaddingOverrides(defaults_), (std::map<std::string, double>{{"UUID", 31}}));
    EXPECT_TRUE(says(card, "31 px"));
    sliders(card)[0]->slider().choose(99);
    EXPECT_EQ(displayPaddingOverrides(defaults_).at("UUID"), 40);

    click(toggle(card));
    EXPECT_TRUE(sliders(card).empty());
    EXPECT_TRUE(displayPaddingOverrides(defaults_).empty());
}

TEST_F(DisplaysPageTest, FollowsWhoeverElseChangesTheGaps) {
    setDisplayPaddingOverrides(defaults_, {{"Screen 2", 5}});
    DisplaysPage page(settings());
    show(page, pageSize);
    auto& card = *cards(page)[0];
    EXPECT_TRUE(toggle(card).isChecked());
    setDisplayPaddingOverrides(defaults_, {{"Screen 2", 22}});
    EXPECT_TRUE(says(card, "22 px"));
    defaults_.removeObject(preference::displayPadding);
    EXPECT_FALSE(toggle(card).isChecked());
    EXPECT_TRUE(sliders(card).empty());
}

TEST_F(DisplaysPageTest, LongNamesStayInsideTheCard) {
    const std::string ordinary = "Example Electronics XY2719DC";
    auto first = screen(1, {0, 0, 1920, 1080}, {0, 0, 1920, 1080});
    auto second = screen(2, {1920, 0, 1920, 1080}, {1920, 0, 1920, 1080});
    first.localizedName = std::string(80, 'W');
    second.localizedName = ordinary;
    desktop_.setScreens({first, second});
    DisplaysPage page(settings());
    show(page, pageSize);
    EXPECT_EQ(page.width(), pageSize.width());
    const auto name = [&page](std::size_t at) {
        return shown<ElidedLabel>(*cards(page)[at]).at(0);
    };
    EXPECT_EQ(name(1)->lines(), QStringList(QString::fromStdString(ordinary)));
    EXPECT_TRUE(name(0)->lines().at(0).endsWith(u'…'));
    EXPECT_TRUE(name(0)->toolTip().contains(QString(80, u'W')));
    const auto& card = *cards(page)[0];
    EXPECT_TRUE(says(card, "Main"));
    for (const auto* const label : shown<QLabel>(card)) {
        const QRect place(label->mapTo(&card, QPoint()), label->size());
        EXPECT_TRUE(card.rect().contains(place)) << label->text().toStdString();
        EXPECT_GE(label->height(), label->heightForWidth(label->width()));
    }
}

}  // namespace
}  // namespace tessellon
