// What saving, renaming, applying and deleting arrangements does to what is stored and shown.
#include "settings/arrangements_model.h"

#include "settings/arrangements_fixture.h"
#include "settings/settings_fixture.h"

namespace tessellon {
namespace {

using ArrangementsModelTest = SettingsTest;

TEST_F(ArrangementsModelTest, SavesTheVisibleWindowsUnderTheNextNumber) {
    ArrangementsModel model(settings());
    int changes = 0;
    const auto token = model.changed().subscribe([&] { ++changes; });
    EXPECT_EQ(model.message(), std::nullopt);
    EXPECT_EQ(model.count(), "0 arrangements");
    model.save();
    EXPECT_EQ(model.message(), "No windows to save. Open some app windows first.");
    EXPECT_FALSE(defaults_.objectForKey(preference::arrangements));
    EXPECT_EQ(changes, 1);

    open(editor, {0, 25, 960, 1055});
    model.save();
    EXPECT_EQ(model.message(), "Saved “Arrangement 1” with 1 window.");
    EXPECT_EQ(model.count(), "1 arrangement");
    open(browser, {960, 25, 960, 1055});
    model.save();
    EXPECT_EQ(model.message(), "Saved “Arrangement 2” with 2 windows.");
    EXPECT_EQ(model.list(), store.load());

    model.remove(model.list()[0].id);
    model.remove(model.list()[0].id);
    EXPECT_EQ(model.message(), "Saved “Arrangement 2” with 2 windows.");
    model.save();
    EXPECT_EQ(model.list().front().name, "Arrangement 1") << "names can repeat";
}

TEST_F(ArrangementsModelTest, LeavesItsOwnWindowsOut) {
    launch(desktop_.applications().ownPid(), "app.tessellon.Tessellon");
    open(desktop_.applications().ownPid(), {0, 25, 900, 720});
    ArrangementsModel model(settings());
    model.save();
    EXPECT_TRUE(model.list().empty());
}

TEST_F(ArrangementsModelTest, NamesTheFirstFourApplications) {
    ArrangementsModel model(settings());
    directory.installed = {{"a", "Alpha"}, {"b", "Beta"}};
    EXPECT_EQ(model.summary(arrangementOf("", {"a"})), "1 window · Alpha");
    EXPECT_EQ(model.summary(arrangementOf("", {"b", "a", "b", "gone"})),
              "4 windows · Beta, Alpha, gone");
    EXPECT_EQ(model.summary(arrangementOf("", {"1", "2", "3", "4"})), "4 windows · 1, 2, 3, 4");
    EXPECT_EQ(model.summary(arrangementOf("", {"6", "5", "4", "3", "2", "1"})),
              "6 windows · 6, 5, 4, 3 +2");
    EXPECT_EQ(model.summary(arrangementOf("", {})), "0 windows");
}

TEST_F(ArrangementsModelTest, FollowsWhoeverChangesTheStore) {
    ArrangementsModel model(settings());
    int changes = 0;
    const auto token = model.changed().subscribe([&] { ++changes; });
    const auto coding = arrangementOf("Coding", {"a"});
    addArrangement(store, coding);
    EXPECT_EQ(model.list(), std::vector{coding});
    EXPECT_EQ(changes, 1);
    model.rename(coding.id, "");
    EXPECT_EQ(store.load().front().name, "");
    model.rename(Uuid::random(), "Lost");
    EXPECT_EQ(changes, 2);
    // An edit of the settings file posts no notification.
    defaults_.removeObject(preference::arrangements);
    EXPECT_TRUE(model.list().empty());
    model.rename(coding.id, "Back");
    model.apply(coding.id);
    EXPECT_FALSE(defaults_.objectForKey(preference::arrangements));
}

TEST_F(ArrangementsModelTest, TellsThoseOfTheSameNameApart) {
    store.save(std::vector{arrangementOf("Desk", {}), arrangementOf("", {}),
                           arrangementOf("Home", {}), arrangementOf("Desk", {})});
    const ArrangementsModel model(settings());
    EXPECT_EQ(model.spokenName(0), "Desk, arrangement 1");
    EXPECT_EQ(model.spokenName(1), "arrangement 2");
    EXPECT_EQ(model.spokenName(2), "Home");
}

TEST_F(ArrangementsModelTest, AppliesWhatIsStored) {
    const auto window = open(editor, {300, 300, 400, 300});
    auto arrangement = arrangementOf("Left", {"com.editor"});
    store.save(std::vector{arrangement});
    ArrangementsModel model(settings());
    arrangement.placements[0].unit = {0.5, 0, 0.5, 1};
    store.save(std::vector{arrangement});
    model.apply(arrangement.id);
    EXPECT_GE(at(window).frame.x, 960);
}

TEST_F(ArrangementsModelTest, DeletingFreesTheShortcutAndEndsARecording) {
    constexpr std::uint32_t controlOptionKeys = 0x1800;
    auto bound = arrangementOf("Bound", {});
    bound.combo = KeyCombo{18, modifier_flag::control | modifier_flag::option, "1"};
    store.save(std::vector{bound, arrangementOf("Other", {})});
    hotkeys.registerHotkeys();
    ASSERT_TRUE(hotKeyCenter.registeredId(18, controlOptionKeys));
    ArrangementsModel model(settings());
    recorder.toggle(HotkeyTarget::arrangement(model.list()[1].id));
    model.remove(bound.id);
    EXPECT_FALSE(recorder.target());
    EXPECT_GT(hotkeys.registeredCount(), 0U);
    EXPECT_FALSE(hotKeyCenter.registeredId(18, controlOptionKeys));
    ASSERT_EQ(model.list().size(), 1U);
    EXPECT_EQ(model.list().front().name, "Other");
}

}  // namespace
}  // namespace tessellon
