// What the panel of the status item shows at its opening, and its one switch that changes with it.
#include "menu/menu_model.h"

#include "app/preferences.h"
#include "platform/memory/memory_user_defaults.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

class MenuModelTest : public testing::Test {
  protected:
    MenuModelTest() { registerPreferenceDefaults(defaults); }

    static RunningApplication application(std::optional<std::string> bundleIdentifier) {
        return {100, std::move(bundleIdentifier), "Éditeur", ActivationPolicy::regular,
                /*hidden=*/false};
    }

    MemoryUserDefaults defaults;
    NotificationCenter notifications;
    ArrangementStore store{defaults, notifications};
};

TEST_F(MenuModelTest, IsAPictureOfItsMoment) {
    addArrangement(store, {Uuid::random(), "Desk", {}, std::nullopt});
    setIgnoredApplications(defaults, {"com.other", "com.editor"});
    const LastSnap last{SnapAction::center, "Editor", "Left"};
    const MenuModel model(application("com.editor"), Snapping::unavailable, last, defaults, store);
    addArrangement(store, {Uuid::random(), "Later", {}, std::nullopt});

    EXPECT_EQ(model.appName(), "Éditeur");
    EXPECT_EQ(model.bundleID(), "com.editor");
    EXPECT_FALSE(model.canSnap());
    EXPECT_EQ(model.last(), last);
    EXPECT_TRUE(model.ignored());
    ASSERT_EQ(model.arrangements().size(), 1U);
    EXPECT_EQ(model.arrangements().front().name, "Desk");
}

TEST_F(MenuModelTest, TogglingTwiceLeavesTheIgnoredApplicationsAsTheyWere) {
    setIgnoredApplications(defaults, {"com.other"});
    MenuModel model(application("com.editor"), Snapping::available, std::nullopt, defaults, store);
    std::vector<bool> told;
    const auto observer = model.changed().subscribe([&] { told.push_back(model.ignored()); });
    EXPECT_FALSE(model.ignored());

    model.toggleIgnored();
    EXPECT_EQ(ignoredApplications(defaults), (std::vector<std::string>{"com.other", "com.editor"}));
    model.toggleIgnored();
    EXPECT_EQ(ignoredApplications(defaults), std::vector<std::string>{"com.other"});
    EXPECT_EQ(told, (std::vector{true, false}));

    // Listed twice by hand: one is taken off, and the switch tells the truth.
    setIgnoredApplications(defaults, {"com.editor", "com.editor"});
    model.toggleIgnored();
    EXPECT_TRUE(model.ignored());
}

TEST_F(MenuModelTest, FollowsTheListWhoeverEditsIt) {
    MenuModel model(application("com.editor"), Snapping::available, std::nullopt, defaults, store);
    std::vector<bool> told;
    const auto observer = model.changed().subscribe([&] { told.push_back(model.ignored()); });
    setIgnoredApplications(defaults, {"com.other"});
    defaults.setBool(preference::paused, true);
    EXPECT_TRUE(told.empty()) << "nothing about this application";
    setIgnoredApplications(defaults, {"com.other", "com.editor"});
    setIgnoredApplications(defaults, {"com.editor"});
    defaults.edit(preference::ignored, PropertyValue(std::string()));
    EXPECT_EQ(told, (std::vector{true, false}));
}

TEST_F(MenuModelTest, WithoutAnIdentifierThereIsNothingToIgnore) {
    setIgnoredApplications(defaults, {"com.other"});
    for (const auto& front : {std::optional(application(std::nullopt)),
                              std::optional<RunningApplication>(std::nullopt)}) {
        MenuModel model(front, Snapping::available, std::nullopt, defaults, store);
        int changes = 0;
        const auto observer = model.changed().subscribe([&] { ++changes; });
        EXPECT_EQ(model.appName().has_value(), front.has_value());
        EXPECT_EQ(model.bundleID(), std::nullopt);
        EXPECT_FALSE(model.ignored());
        model.toggleIgnored();
        EXPECT_FALSE(model.ignored());
        EXPECT_EQ(changes, 0);
        EXPECT_EQ(ignoredApplications(defaults), std::vector<std::string>{"com.other"});
    }
}

}  // namespace
}  // namespace tessellon
