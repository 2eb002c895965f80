// The windows of the running program as a screen reader finds them.
#include "assistance_fixture.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace tessellon::desktop {
namespace {

constexpr std::array<std::string_view, 7> pages{
    "General", "Snap zones", "Shortcuts", "Arrangements", "Rules", "Displays", "About"};

class AccessibilityTest : public AssistanceTesting {
  protected:
    /// Everything below the window, once a text on it is shown.
    std::vector<Accessible> shownWith(std::string_view title) {
        control("label", title);
        program().waitUntilIdle();
        return bus().tree(self());
    }
    void expectControlsToBeReadable(const std::vector<Accessible>& objects) {
        int controls = 0;
        for (const auto& object : objects) {
            // What can have the keyboard or be pressed, and is no more than a box around it.
            if (!object.is(AccessibleState::focusable) || object.role == "frame" ||
                object.role == "scroll pane") {
                continue;
            }
            ++controls;
            EXPECT_NE(object.name, "") << "a nameless " << object.role;
            EXPECT_NE(object.role, "filler") << object.name;
            EXPECT_NE(object.role, "unknown") << object.name;
            EXPECT_FALSE(bus().actions(object).empty()) << object.name;
            EXPECT_TRUE(object.role != "slider" || bus().value(object)) << object.name;
        }
        EXPECT_GT(controls, 0) << describe(objects);
    }
};

TEST_P(AccessibilityTest, everyPageOfTheSettingsIsReadAndWorked) {
    begin();
    startWithSettings("General");
    for (const auto page : pages) {
        SCOPED_TRACE(page);
        showPage(page);
        // The last page has the program's name for a title.
        expectControlsToBeReadable(shownWith(page == "About" ? "Tessellon" : page));
    }
    showPage("General");
    const auto cycles = control("check box", "Repeat shortcut cycles sizes");
    const bool before = cycles.is(AccessibleState::checked);
    EXPECT_TRUE(bus().act(cycles, "Toggle"));
    EXPECT_TRUE(waitUntilStored("cycle", !before));
    EXPECT_EQ(bus().again(cycles).value_or(cycles).is(AccessibleState::checked), !before);
    const auto gap = control("slider", "Gap between windows");
    EXPECT_TRUE(bus().setValue(gap, 12));
    EXPECT_TRUE(waitUntilStored("gap", 12.0));
    EXPECT_EQ(bus().value(gap), 12);
}

TEST_P(AccessibilityTest, everyStepOfTheTourIsRead) {
    begin();
    program().forgetSettings();
    program().start();
    control("frame", tourTitle);
    struct Step {
        std::string_view title;
        std::string_view next;
    };
    for (const auto& [title, next] :
         std::array<Step, 4>{{{"Windows that snap into place.", "Get started"},
                              {"Let Tessellon move your windows", "Continue"},
                              {"Give it a spin", "Continue"},
                              {"You're all set!", "Finish"}}}) {
        SCOPED_TRACE(title);
        expectControlsToBeReadable(shownWith(title));
        press(next);
    }
    EXPECT_TRUE(waitUntilStored("onboarded", true));
}

INSTANTIATE_TEST_SUITE_P(On, AccessibilityTest, ::testing::Values("openbox"), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
