// Every page of the settings, as it is found out without eyes or without a pointer.
#include "app/preferences.h"
#include "fakes/accessibility_walk.h"
#include "settings/settings_view.h"
#include "settings/settings_view_fixture.h"

namespace tessellon {
namespace {

/// With a few of everything that the pages list.
class SettingsAccessibility : public SettingsViewTest,
                              public testing::WithParamInterface<SettingsPage> {
  protected:
    SettingsAccessibility() {
        directory.installed = {{"org.example.Editor", "Editor", ""}};
        defaults_.setString(preference::ignored, "org.example.Editor,org.example.Gone");
        for (const auto* const name : {"Work", ""}) {
            addArrangement(
                store,
                Arrangement{
                    .id = Uuid::random(), .name = name, .placements = {}, .combo = std::nullopt});
        }
    }
};

TEST_P(SettingsAccessibility, EveryControlIsDescribedAndReachedByTab) {
    SettingsView view(settings(), GetParam());
    show(view, SettingsView::contentSize);
    AccessibilityWalk walk(view);
    walk.expectControlsToBeDescribed();
    walk.expectTabToReachThem();
}

std::string pageName(const testing::TestParamInfo<SettingsPage>& page) {
    std::string name(title(page.param));
    std::erase(name, ' ');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Page, SettingsAccessibility, testing::ValuesIn(allSettingsPages),
                         pageName);

QAccessibleInterface& interfaceOf(QWidget& widget) {
    return *QAccessible::queryAccessibleInterface(&widget);
}

void toggle(QWidget& widget) {
    interfaceOf(widget).actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
}

using SettingsAssistance = SettingsViewTest;

TEST_F(SettingsAssistance, ItSelectsPagesAndChangesSettings) {
    SettingsView view(settings());
    show(view, SettingsView::contentSize);
    auto& cycles = control(view, "Repeat shortcut cycles sizes");
    ASSERT_EQ(interfaceOf(cycles).state().checked, defaults_.boolForKey(preference::cycle));
    const bool before = cycles.isChecked();
    toggle(cycles);
    EXPECT_EQ(defaults_.boolForKey(preference::cycle), !before);
    EXPECT_EQ(interfaceOf(cycles).state().checked, !before);

    toggle(control(view, "Displays"));
    settle();
    EXPECT_EQ(view.page(), SettingsPage::displays);
    EXPECT_TRUE(interfaceOf(control(view, "Displays")).state().checked);
    EXPECT_FALSE(interfaceOf(control(view, "General")).state().checked);
}

}  // namespace
}  // namespace tessellon
