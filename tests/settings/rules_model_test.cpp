#include "settings/rules_model.h"

#include "settings/settings_fixture.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

class RulesModelTest : public SettingsTest {
  protected:
    RulesModelTest() {
        directory.installed = {{"org.example.Draw", "Draw", "draw"},
                               {"org.example.Notes", "Notes", "/icons/notes.png"},
                               {"suite", "The.app Suite.a.apppp"},
                               {"plain.app", "plain.app"}};
        directory.notShown = {{"org.example.Helper", "Helper"}};
    }

    std::string list() const { return *defaults_.stringForKey(preference::ignored); }
    void setList(const std::string& text) { defaults_.setString(preference::ignored, text); }

    /// The list after a search that starts from an empty one; "?" when there was an error.
    std::string found(const std::string& query) {
        setList("");
        model.setQuery(query);
        model.search();
        return model.error() ? "?" : list();
    }

    RulesModel model{defaults_, directory, desktop_.applications()};
};

TEST_F(RulesModelTest, TheListKeepsItsOrderAndNamesWhatIsInstalled) {
    setList("gone.app\nplain.app\nsuite\n\n \torg.example.Draw\t");
    EXPECT_EQ(model.entries(), (std::vector<IgnoredApplication>{
                                   {"gone.app", "gone.app", "", false},
                                   {"plain.app", "plain.app", "", true},
                                   {"suite", "The Suite.app", "", true},
                                   {"org.example.Draw", "Draw", "draw", true},
                               }));
    EXPECT_EQ(model.count(), "4 apps");
    setList("one");
    EXPECT_EQ(model.count(), "1 app");
    setList("");
    EXPECT_EQ(model.count(), "0 apps");
}

TEST_F(RulesModelTest, ASearchTakesIdentifiersAndExactNames) {
    EXPECT_EQ(found("org.example.Notes"), "org.example.Notes");
    EXPECT_EQ(found("org.example.Notes.desktop"), "org.example.Notes");
    EXPECT_EQ(found("org.example.Helper"), "org.example.Helper");
    EXPECT_EQ(found(" \tNotes\t "), "org.example.Notes");
    EXPECT_EQ(found("Draw.App"), "org.example.Draw");
    for (const auto* missing : {"notes", "Note", "ORG.example.Notes", "Draw.app.app", ".app"}) {
        EXPECT_EQ(found(missing), "?") << missing;
        EXPECT_EQ(list(), "");
        EXPECT_EQ(model.query(), missing);
    }
    // An identifier is one even where it is another one's name.
    directory.installed.push_back({"Notes", "Other"});
    EXPECT_EQ(found("Notes"), "Notes");
}

TEST_F(RulesModelTest, WhatMerelyRunsIsFoundAfterWhatIsInstalled) {
    launch(300, "XScript");
    launch(301, "Tray", ActivationPolicy::accessory);
    launch(302, std::nullopt);
    EXPECT_EQ(found("XScript"), "XScript");
    EXPECT_EQ(found("App 300"), "XScript");
    EXPECT_EQ(found("App 300.app"), "XScript");
    for (const auto* missing : {"xscript", "Tray", "App 301", "App 302"}) {
        EXPECT_EQ(found(missing), "?") << missing;
    }
    directory.installed.push_back({"org.example.Script", "App 300"});
    EXPECT_EQ(found("App 300"), "org.example.Script");
}

TEST_F(RulesModelTest, AnErrorStaysUntilSomethingIsAdded) {
    model.setQuery("  Nothing ");
    model.search();
    EXPECT_EQ(model.error(),
              "Couldn't find “Nothing”. Try the exact app name, or leave the field empty and click "
              "Add app.");
    model.setQuery(" \t ");
    model.search();
    EXPECT_TRUE(model.error());
    EXPECT_EQ(model.query(), " \t ");
    setList("suite");
    model.add("suite");
    EXPECT_EQ(list(), "suite") << "listed already";
    EXPECT_FALSE(model.error());
    EXPECT_EQ(model.query(), "");
    model.search();
    EXPECT_FALSE(model.error());
}

TEST_F(RulesModelTest, RemovingDropsEveryEqualEntry) {
    setList("a\nb\na\nA");
    model.remove("a");
    EXPECT_EQ(list(), "b\nA");
    model.remove("missing");
    EXPECT_EQ(list(), "b\nA");
}

TEST_F(RulesModelTest, WhatCanBeChosenIsWhatMenusShow) {
    setList("org.example.Notes");
    const auto choosable = model.choosable();
    ASSERT_EQ(choosable.size(), 4U);
    EXPECT_EQ(choosable[1].application.identifier, "org.example.Notes");
    EXPECT_TRUE(choosable[1].isIgnored);
    EXPECT_FALSE(choosable[0].isIgnored);
}

TEST_F(RulesModelTest, SaysWhenTheListChangesElsewhere) {
    int changes = 0;
    const auto token = model.changed().subscribe([&changes] { ++changes; });
    toggleIgnored(defaults_, "com.editor");
    EXPECT_EQ(changes, 1);
    defaults_.setBool(preference::paused, true);
    EXPECT_EQ(changes, 1);
}

}  // namespace
}  // namespace tessellon
