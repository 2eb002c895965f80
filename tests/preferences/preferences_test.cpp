// The defaults of the settings, and what is made of values that a user typed.
#include "app/preferences.h"

#include "platform/memory/memory_user_defaults.h"

#include <limits>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

class Preferences : public testing::Test {
  protected:
    Preferences() { registerPreferenceDefaults(defaults_); }

    MemoryUserDefaults defaults_;
};

TEST_F(Preferences, HasADefaultForEverySettingAndStoresNone) {
    const std::vector<std::pair<std::string_view, PropertyValue>> expected{
        {preference::paused, false},          {preference::gap, 8.0},
        {preference::padding, 8.0},           {preference::cycle, true},
        {preference::restoreOnDrag, true},    {preference::dragEnabled, true},
        {preference::ignored, std::string()}, {preference::almostPadding, 40.0},
        {preference::showPreview, true},      {preference::ignoreSmall, true},
        {preference::onboarded, false},       {preference::tilingEnabled, false},
        {preference::maxTiles, 4.0},          {preference::masterRatio, 60.0},
    };
    for (const auto& [key, value] : expected) {
        EXPECT_EQ(defaults_.objectForKey(key), value) << key;
    }
    for (const auto key : {preference::displayPadding, preference::keymap, preference::arrangements,
                           preference::restoreMemory, preference::automaticUpdateChecks,
                           preference::lastUpdateCheck, preference::announcedVersion}) {
        EXPECT_EQ(defaults_.objectForKey(key), std::nullopt) << key;
    }
    EXPECT_TRUE(defaults_.storedValues().empty());
}

TEST_F(Preferences, CleansTheIgnoredListWhenReading) {
    defaults_.setString(preference::ignored, "com.one\n\n  com.two \n\t\ncom.one\n");
    EXPECT_EQ(ignoredApplications(defaults_),
              (std::vector<std::string>{"com.one", "com.two", "com.one"}));
    EXPECT_TRUE(isIgnored(defaults_, "com.two"));
    EXPECT_FALSE(isIgnored(defaults_, "com.Two"));
    EXPECT_FALSE(isIgnored(defaults_, "com"));
    EXPECT_FALSE(isIgnored(defaults_, ""));
}

TEST_F(Preferences, TogglesOneOccurrenceAtATime) {
    defaults_.setString(preference::ignored, "a\nb\na");
    toggleIgnored(defaults_, "a");
    EXPECT_EQ(defaults_.stringForKey(preference::ignored), "b\na");
    toggleIgnored(defaults_, "c");
    EXPECT_EQ(defaults_.stringForKey(preference::ignored), "b\na\nc");
    for (const auto* identifier : {"a", "b", "c"}) {
        toggleIgnored(defaults_, identifier);
    }
    EXPECT_EQ(defaults_.stringForKey(preference::ignored), "");
}

TEST_F(Preferences, ReadsOwnEdgeGapsOfDisplays) {
    const auto store = [this](PropertyDictionary values) {
        defaults_.setObject(preference::displayPadding, std::move(values));
        return displayPaddingOverrides(defaults_);
    };
    using Map = std::map<std::string, double>;
    EXPECT_EQ(displayPaddingOverrides(defaults_), Map{});
    EXPECT_EQ(store({{"A", 12.5}, {"B", std::int64_t{-5}}, {"C", infinity}}),
              (Map{{"A", 12.5}, {"B", 0}}));
    EXPECT_EQ(store({{"A", 12.5}, {"B", std::string("8")}}), Map{});
    defaults_.setString(preference::displayPadding, "12");
    EXPECT_EQ(displayPaddingOverrides(defaults_), Map{});

    setDisplayPaddingOverrides(defaults_, {{"A", 3}});
    EXPECT_EQ(displayPaddingOverrides(defaults_), (Map{{"A", 3}}));
}

TEST_F(Preferences, TamesNumbers) {
    const auto maxTiles = [this](double stored) {
        defaults_.setDouble(preference::maxTiles, stored);
        return effectiveMaxTiles(defaults_);
    };
    EXPECT_EQ(maxTiles(9.7), 8);
    EXPECT_EQ(maxTiles(1), 2);
    EXPECT_EQ(maxTiles(3.9), 3);
    EXPECT_EQ(maxTiles(1e300), 8);
    EXPECT_EQ(maxTiles(nan), 4);

    const auto share = [this](double stored) {
        defaults_.setDouble(preference::masterRatio, stored);
        return effectiveMasterShare(defaults_);
    };
    EXPECT_DOUBLE_EQ(share(95), 0.8);
    EXPECT_DOUBLE_EQ(share(10), 0.3);
    EXPECT_DOUBLE_EQ(share(31), 0.31);
    EXPECT_DOUBLE_EQ(share(-infinity), 0.6);

    defaults_.setDouble(preference::gap, -3);
    defaults_.setDouble(preference::padding, nan);
    defaults_.setObject(preference::almostPadding, PropertyData{1, 2});
    EXPECT_EQ(effectiveGap(defaults_), 0);
    EXPECT_EQ(effectivePadding(defaults_), 8);
    EXPECT_EQ(effectiveAlmostPadding(defaults_), 0);
}

TEST_F(Preferences, ReadsNumbersAndAnswersThatWereTypedAsText) {
    const auto isPaused = [this](const char* text) {
        defaults_.setString(preference::paused, text);
        return defaults_.boolForKey(preference::paused);
    };
    EXPECT_TRUE(isPaused("YES"));
    EXPECT_TRUE(isPaused(" 1"));
    EXPECT_FALSE(isPaused("no"));
    EXPECT_FALSE(isPaused("nan")) << "not finite: the registered default";
    EXPECT_FALSE(isPaused("infrequent"));
    defaults_.setString(preference::cycle, "1e999");
    EXPECT_TRUE(defaults_.boolForKey(preference::cycle));
    defaults_.setString(preference::gap, "12 points");
    EXPECT_EQ(effectiveGap(defaults_), 12);
    defaults_.setString(preference::gap, "1e999");
    EXPECT_EQ(effectiveGap(defaults_), 8);
}

}  // namespace
}  // namespace tessellon
