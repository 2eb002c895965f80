// The list of displays as the settings show it, and the gaps that displays have of their own.
#include "settings/displays_model.h"

#include "app/preferences.h"
#include "engine/engine_fixture.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

using Gaps = std::map<std::string, double>;

class DisplaysModelTest : public EngineTest {
  protected:
    DisplaysModel model() { return {desktop_.displays(), engine().screens(), defaults_}; }
    Gaps stored() const { return displayPaddingOverrides(defaults_); }
    static Screen named(std::uint64_t id, const Rect& frame, std::string name) {
        Screen result = screen(id, frame, frame);
        result.localizedName = std::move(name);
        return result;
    }
};

TEST_F(DisplaysModelTest, ListsTheScreensInTheOrderInWhichWindowsMove) {
    Screen scaled = screen(3, {-2400, 0, 2400, 1350}, {-2400, 0, 2400, 1350}, "UUID-3");
    scaled.backingScale = {0.8, 0.8};
    Screen sharp = screen(2, {1920, 0, 853.5, 480}, {1920, 0, 853.5, 480});
    sharp.backingScale = {2, 2};
    const auto plain = screen(1, {0, 0, 1920, 1080}, {0, 0, 1920, 1055}, "UUID-1");
    desktop_.setScreens({plain, sharp, scaled});

    const auto shown = model();
    const auto& displays = shown.displays();
    ASSERT_EQ(displays.size(), 3U);
    EXPECT_EQ(displays[0].key, "UUID-3");
    EXPECT_EQ(displays[0].name, "Screen 3");
    EXPECT_FALSE(displays[0].isMain);
    EXPECT_EQ(displays[0].sizeLine, "1920 × 1080 · looks like 2400 × 1350");
    EXPECT_EQ(displays[1].key, "UUID-1");
    EXPECT_TRUE(displays[1].isMain);
    EXPECT_EQ(displays[1].sizeLine, "1920 × 1080 · looks like 1920 × 1080");
    EXPECT_EQ(displays[2].key, "Screen 2");
    EXPECT_FALSE(displays[2].isMain);
    EXPECT_EQ(displays[2].sizeLine, "1707 × 960 · looks like 854 × 480");

    // What is connected later shows when the list is made again.
    desktop_.setScreens({});
    EXPECT_EQ(shown.displays().size(), 3U);
    EXPECT_TRUE(model().displays().empty());
}

TEST_F(DisplaysModelTest, AnOwnGapBeginsWithThatOfAllOthersAndEndsWithIt) {
    const auto main = screen(1, {0, 0, 1000, 800}, {0, 0, 1000, 800}, "A");
    desktop_.setScreens({main});
    auto displays = model();
    defaults_.setDouble(preference::padding, 17);
    EXPECT_FALSE(displays.hasOwnGap("A"));
    EXPECT_EQ(displays.ownGap("A"), 0);

    displays.addOwnGap("A");
    EXPECT_TRUE(displays.hasOwnGap("A"));
    EXPECT_EQ(displays.ownGap("A"), 17);
    EXPECT_EQ(stored(), (Gaps{{"A", 17}}));
    defaults_.setDouble(preference::padding, 3);
    displays.setOwnGap("A", 30);
    EXPECT_EQ(engine().screens().usableFrame(main), (Rect{30, 30, 940, 740}));

    displays.removeOwnGap("A");
    EXPECT_FALSE(displays.hasOwnGap("A"));
    EXPECT_EQ(engine().screens().usableFrame(main), (Rect{3, 3, 994, 794}));

    defaults_.setDouble(preference::padding, -5);
    displays.addOwnGap("A");
    EXPECT_EQ(displays.ownGap("A"), 0);
}

TEST_F(DisplaysModelTest, StoresTheWholeMapAndFollowsWhoeverElseChangesIt) {
    // The gap of a display that is not connected now.
    setDisplayPaddingOverrides(defaults_, {{"Away", 12}});
    auto displays = model();
    int changes = 0;
    const auto counting = displays.changed().subscribe([&changes] { ++changes; });

    displays.setOwnGap("A", 4);
    EXPECT_EQ(stored(), (Gaps{{"A", 4}, {"Away", 12}}));
    EXPECT_EQ(changes, 1);

    setDisplayPaddingOverrides(defaults_, {{"A", 9}});
    EXPECT_EQ(changes, 2);
    EXPECT_EQ(displays.ownGap("A"), 9);
    displays.addOwnGap("B");
    EXPECT_EQ(stored(), (Gaps{{"A", 9}, {"B", 8}}));

    defaults_.setDouble(preference::padding, 20);
    EXPECT_EQ(changes, 3) << "the gap of all others is none of an own one";
    defaults_.setObject(preference::displayPadding,
                        PropertyDictionary{{"A", std::string("wide")}, {"B", 8.0}});
    EXPECT_FALSE(displays.hasOwnGap("A"));
    EXPECT_FALSE(displays.hasOwnGap("B"));
}

TEST_F(DisplaysModelTest, DisplaysThatCannotBeToldApartShareTheirGap) {
    desktop_.setScreens({named(1, {0, 0, 800, 600}, "Panel"), named(2, {800, 0, 800, 600}, "Panel"),
                         named(3, {1600, 0, 800, 600}, "Other")});
    auto displays = model();
    ASSERT_EQ(displays.displays()[0].key, displays.displays()[1].key);
    int changes = 0;
    const auto counting = displays.changed().subscribe([&changes] { ++changes; });
    displays.addOwnGap("Panel");
    EXPECT_EQ(changes, 1) << "both cards have to show it";
    EXPECT_FALSE(displays.hasOwnGap(displays.displays()[2].key));
}

}  // namespace
}  // namespace tessellon
