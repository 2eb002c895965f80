// The page about the program as it is drawn and used.
#include "settings/about_page_view.h"

#include "settings/settings_view_fixture.h"
#include "ui/pill_button.h"
#include "ui/pill_toggle.h"

#include <gtest/gtest.h>

namespace tessellon {
namespace {

using AboutPageTest = SettingsViewTest;

TEST_F(AboutPageTest, NamesTheProgramAndItsVersion) {
    AboutPage page(settings());
    show(page, pageSize);
    EXPECT_TRUE(says(page, "Tessellon"));
    EXPECT_TRUE(says(page, "Version 1.2.3"));
    EXPECT_TRUE(says(page,
                     "Windows that snap into place. Hold ⌘ and drag, press ⌃⌥ + a key, or press "
                     "right ⌘ + / for the launcher."));
    auto unnamed = settings();
    unnamed.version.clear();
    AboutPage other(unnamed);
    show(other, pageSize);
    EXPECT_TRUE(says(other, "Version 1.0"));
}

TEST_F(AboutPageTest, OpensTheTourAndChecksForUpdates) {
    AboutPage page(settings());
    show(page, pageSize);
    int tours = 0;
    const auto counting =
        notifications.observe(notification::showTour, [&tours](const auto&) { ++tours; });
    click(control<PillButton>(page, "Show welcome tour"));
    EXPECT_EQ(tours, 1);
    EXPECT_EQ(updater.checks(), 0);
    click(control<PillButton>(page, "Check for Updates…"));
    EXPECT_EQ(updater.checks(), 1);
    EXPECT_EQ(tours, 1);
}

TEST_F(AboutPageTest, TheSwitchIsThatOfTheUpdater) {
    updater.setAutomaticallyChecksForUpdates(true);
    AboutPage page(settings());
    show(page, pageSize);
    auto& toggle = control<PillToggle>(page, "Automatically check for updates");
    EXPECT_TRUE(toggle.isChecked());
    click(toggle);
    EXPECT_FALSE(updater.automaticallyChecksForUpdates());
    updater.setAutomaticallyChecksForUpdates(true);
    EXPECT_TRUE(toggle.isChecked());
}

}  // namespace
}  // namespace tessellon
