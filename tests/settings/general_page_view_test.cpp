#include "settings/general_page_view.h"

#include "settings/gap_preview_view.h"
#include "settings/settings_view_fixture.h"
#include "ui/pill_toggle.h"
#include "ui/slider_row.h"

#include <optional>

namespace tessellon {
namespace {

constexpr auto startText = "Start snapping as soon as your Mac wakes up.";
constexpr auto approveText = "Approve in System Settings › Login Items";
constexpr auto linkText = "Open Login Items";

class GeneralPageTest : public SettingsViewTest {
  protected:
    void open() {
        page.reset();
        page.emplace(settings());
        show(*page, pageSize);
    }
    PillToggle& toggle(const std::string& name) { return control<PillToggle>(*page, name); }
    PillSlider& slider(const std::string& name) { return control<PillSlider>(*page, name); }
    bool hasControl(const std::string& name) {
        return findNamed(shown<QWidget>(*page), name) != nullptr;
    }

    std::optional<GeneralPage> page;
};

TEST_F(GeneralPageTest, TogglesWriteTheirSettingAndFollowIt) {
    open();
    const std::pair<std::string, std::string_view> toggles[] = {
        {"Restore size when dragged out of a zone", preference::restoreOnDrag},
        {"Repeat shortcut cycles sizes", preference::cycle},
        {"Tile this display", preference::tilingEnabled},
    };
    for (const auto& [name, key] : toggles) {
        const bool initial = defaults_.boolForKey(key);
        ASSERT_EQ(toggle(name).isChecked(), initial) << name;
        click(toggle(name));
        EXPECT_EQ(defaults_.boolForKey(key), !initial) << name;
        QTest::keyClick(&toggle(name), Qt::Key_Space);
        EXPECT_EQ(defaults_.boolForKey(key), initial) << name;
        defaults_.edit(key, PropertyValue(!initial));
        EXPECT_EQ(toggle(name).isChecked(), !initial) << name;
    }
}

TEST_F(GeneralPageTest, SlidersWriteTheirSettingAtEveryStepAndFollowIt) {
    defaults_.setBool(preference::tilingEnabled, true);
    open();
    struct Expected {
        std::string name;
        std::string_view key;
        double value, lower, upper, step;
        std::string unit;
    };
    for (const auto& expected :
         {Expected{"Gap between windows", preference::gap, 8, 0, 40, 1, " px"},
          Expected{"Gap at screen edges", preference::padding, 8, 0, 40, 1, " px"},
          Expected{"Almost-maximize padding", preference::almostPadding, 40, 0, 160, 1, " px"},
          Expected{"Max tiles", preference::maxTiles, 4, 2, 8, 1, ""},
          Expected{"Master width", preference::masterRatio, 60, 30, 80, 5, " %"}}) {
        auto& shown = slider(expected.name);
        const auto number = [&](double value) {
            return std::to_string(static_cast<int>(value)) + expected.unit;
        };
        const auto isAt = [&](double value) {
            return shown.value() == value && defaults_.doubleForKey(expected.key) == value &&
                   says(*shown.parentWidget(), number(value));
        };
        EXPECT_TRUE(isAt(expected.value)) << expected.name;
        QTest::keyClick(&shown, Qt::Key_Right);
        EXPECT_TRUE(isAt(expected.value + expected.step)) << expected.name;
        QTest::keyClick(&shown, Qt::Key_End);
        EXPECT_TRUE(isAt(expected.upper)) << expected.name;
        QTest::keyClick(&shown, Qt::Key_Home);
        EXPECT_TRUE(isAt(expected.lower)) << expected.name;
        defaults_.edit(expected.key, PropertyValue(expected.upper));
        EXPECT_TRUE(isAt(expected.upper)) << expected.name;
    }
}

TEST_F(GeneralPageTest, ADragIsStoredWhileItLastsAndShownInThePreview) {
    open();
    auto& gap = slider("Gap between windows");
    const auto& preview = *shown<GapPreview>(*page).at(0);
    const int middle = gap.height() / 2;
    QTest::mousePress(&gap, Qt::LeftButton, {}, {gap.width() / 2, middle});
    EXPECT_EQ(defaults_.doubleForKey(preference::gap), 20);
    QTest::mouseMove(&gap, {gap.width() + 50, middle});
    EXPECT_EQ(defaults_.doubleForKey(preference::gap), 40);
    QTest::mouseRelease(&gap, Qt::LeftButton, {}, {gap.width() + 50, middle});
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return preview.rightWindow().left() - preview.leftWindow().right() == 18; }));
}

TEST_F(GeneralPageTest, TilingHasItsSlidersOnlyWhileItIsOn) {
    defaults_.setDouble(preference::maxTiles, 6);
    open();
    EXPECT_FALSE(hasControl("Max tiles"));
    click(toggle("Tile this display"));
    EXPECT_TRUE(hasControl("Max tiles"));
    EXPECT_TRUE(hasControl("Master width"));
    defaults_.edit(preference::tilingEnabled, PropertyValue(false));
    settle();
    EXPECT_FALSE(hasControl("Max tiles"));
    EXPECT_FALSE(hasControl("Master width"));
    EXPECT_EQ(defaults_.doubleForKey(preference::maxTiles), 6);
}

TEST_F(GeneralPageTest, AFailedRegistrationSaysWhyAndFlipsTheToggleBack) {
    loginItem.setProblem("The folder is read-only.");
    open();
    click(toggle("Launch at login"));
    EXPECT_FALSE(toggle("Launch at login").isChecked());
    EXPECT_TRUE(says(*page, "The folder is read-only."));
    EXPECT_TRUE(toggle("Launch at login").accessibleDescription().contains("read-only"));
    EXPECT_EQ(loginItem.registrations(), 1);

    loginItem.setProblem(std::nullopt);
    click(toggle("Launch at login"));
    EXPECT_TRUE(toggle("Launch at login").isChecked());
    EXPECT_FALSE(says(*page, "The folder is read-only."));
    EXPECT_EQ(toggle("Launch at login").accessibleDescription(), startText);
    EXPECT_TRUE(says(*page, startText));
    EXPECT_EQ(loginItem.status(), LoginItemStatus::enabled);

    click(toggle("Launch at login"));
    EXPECT_EQ(loginItem.status(), LoginItemStatus::notRegistered);
}

TEST_F(GeneralPageTest, AnItemThatNeedsApprovalOffersTheWayThere) {
    loginItem.setRequiresApproval(true);
    open();
    EXPECT_FALSE(hasControl(linkText));
    click(toggle("Launch at login"));
    EXPECT_TRUE(toggle("Launch at login").isChecked());
    EXPECT_TRUE(says(*page, approveText));
    click(control(*page, linkText));
    EXPECT_EQ(loginItem.openings(), 1);

    // The user comes back from there.
    loginItem.setStatus(LoginItemStatus::enabled);
    QWidget elsewhere;
    show(elsewhere, {100, 100});
    page->activateWindow();
    settle();
    EXPECT_TRUE(toggle("Launch at login").isChecked());
    EXPECT_TRUE(says(*page, startText));
    EXPECT_FALSE(hasControl(linkText));
}

TEST_F(GeneralPageTest, NumbersOfAFileThatWasEditedByHandFitTheirRow) {
    for (const double gap : {1e300, -1e300, 1e19}) {
        defaults_.setDouble(preference::gap, gap);
        open();
        EXPECT_TRUE(says(*page, gap > 0 ? "999999 px" : "-999999 px"));
        EXPECT_EQ(page->width(), pageSize.width());
    }
}

}  // namespace
}  // namespace tessellon
