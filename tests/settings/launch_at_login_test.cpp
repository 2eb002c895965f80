#include "settings/launch_at_login.h"

#include "platform/memory/memory_login_item.h"

#include <gtest/gtest.h>

namespace tessellon {
namespace {

struct LaunchAtLoginTest : testing::Test {
    MemoryLoginItem item;
};

TEST_F(LaunchAtLoginTest, ShowsTheStateOfTheItemItIsMadeFor) {
    EXPECT_FALSE(LaunchAtLogin(item).launchAtLogin());
    item.setStatus(LoginItemStatus::enabled);
    EXPECT_TRUE(LaunchAtLogin(item).launchAtLogin());
    EXPECT_FALSE(LaunchAtLogin(item).loginNeedsApproval());
    item.setStatus(LoginItemStatus::requiresApproval);
    EXPECT_TRUE(LaunchAtLogin(item).launchAtLogin());
    EXPECT_TRUE(LaunchAtLogin(item).loginNeedsApproval());
}

TEST_F(LaunchAtLoginTest, AFailureGoesBackToTheRealStateWithoutASecondAttempt) {
    LaunchAtLogin login(item);
    int changes = 0;
    const auto changed = login.changed().subscribe([&] { ++changes; });
    item.setProblem("The folder is read-only.");
    login.choose(true);
    EXPECT_FALSE(login.launchAtLogin());
    EXPECT_EQ(login.loginError(), "The folder is read-only.");
    EXPECT_EQ(item.registrations(), 1);
    EXPECT_EQ(changes, 1);

    item.setProblem(std::nullopt);
    item.setRequiresApproval(true);
    login.choose(true);
    EXPECT_TRUE(login.launchAtLogin());
    EXPECT_TRUE(login.loginNeedsApproval());
    EXPECT_EQ(login.loginError(), std::nullopt);

    item.setProblem("Busy.");
    login.choose(false);
    EXPECT_TRUE(login.launchAtLogin());
    EXPECT_TRUE(login.loginNeedsApproval());
    EXPECT_EQ(login.loginError(), "Busy.");
    EXPECT_EQ(item.removals(), 1);
}

TEST_F(LaunchAtLoginTest, FollowsAnotherSwitchAndLooksAgainWhenToldTo) {
    LaunchAtLogin login(item);
    int changes = 0;
    const auto changed = login.changed().subscribe([&] { ++changes; });
    LaunchAtLogin(item).choose(true);
    EXPECT_TRUE(login.launchAtLogin());
    EXPECT_EQ(changes, 1);
    login.refresh();
    EXPECT_EQ(changes, 1);
    item.setProblem("Busy.");
    login.choose(false);
    item.setStatus(LoginItemStatus::requiresApproval);
    login.refresh();
    EXPECT_TRUE(login.loginNeedsApproval());
    EXPECT_EQ(login.loginError(), std::nullopt) << "it was about another state";
}

}  // namespace
}  // namespace tessellon
