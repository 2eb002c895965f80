// The stored form of the arrangements, to the byte, and the list operations on it.
#include "arrangements/arrangement_store.h"

#include "app/notification_names.h"
#include "app/preferences.h"
#include "fakes/stored_text.h"
#include "platform/memory/memory_user_defaults.h"

#include <limits>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

class ArrangementStoreTest : public testing::Test {
  protected:
    void put(std::string_view json) { defaults.setObject(preference::arrangements, dataOf(json)); }

    std::string stored() const { return storedText(defaults, preference::arrangements); }

    static Arrangement named(std::string name) { return {Uuid::random(), std::move(name), {}, {}}; }

    MemoryUserDefaults defaults;
    NotificationCenter notifications;
    ArrangementStore store{defaults, notifications};
    int posts = 0;
    Token token =
        notifications.observe(notification::arrangementsChanged, [this](auto&) { ++posts; });
};

TEST_F(ArrangementStoreTest, TheStoredFormIsExact) {
    const std::string json =
        R"([{"id":"3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5C","name":"Arrangement 1","placements":[)"
        R"({"bundleID":"com.example.editor","title":"a\/notes.txt","screen":0,"unit":[[0,0],[0.5,1]]},)"
        R"({"bundleID":"com.example.browser","title":"","screen":-1,"unit":[[0.25,0],[0.3333333333333333,1]]})"
        R"(]},{"id":"00000000-0000-0000-0000-000000000001","name":"ü","placements":[],)"
        R"("combo":{"keyCode":18,"mods":786432,"key":"1"}}])";
    put(json);
    const auto loaded = store.load();
    ASSERT_EQ(loaded.size(), 2U);
    EXPECT_EQ(loaded[0].placements[0].title, "a/notes.txt");
    EXPECT_EQ(loaded[0].placements[1],
              (Arrangement::Placement{"com.example.browser", "", -1, {0.25, 0, 1.0 / 3.0, 1}}));
    EXPECT_EQ(loaded[0].combo, std::nullopt);
    EXPECT_EQ(loaded[1].combo, (KeyCombo{18, 786432, "1"}));
    defaults.removeObject(preference::arrangements);
    store.save(loaded);
    EXPECT_EQ(stored(), json);

    store.save({});
    EXPECT_EQ(stored(), "[]");
    EXPECT_TRUE(store.load().empty());
    EXPECT_TRUE(defaults.keptAside().empty());
}

TEST_F(ArrangementStoreTest, ReadsWhatOtherWritersMayHaveWritten) {
    put(R"( [ {"more":[1], "combo":null, "placements":[{"unit":[[0,0],[1,1]],"screen":1.0,)"
        R"("title":"a/b","bundleID":"x","also":{}}], "name":"n",)"
        R"("id":"3f2b8c1e-7d4a-4e6b-9a0c-5d1e2f3a4b5c"} ] )");
    const auto loaded = store.load();
    ASSERT_EQ(loaded.size(), 1U);
    EXPECT_EQ(loaded[0].combo, std::nullopt);
    EXPECT_EQ(loaded[0].placements[0].screen, 1);
}

TEST_F(ArrangementStoreTest, OneBadPartMakesTheListEmptyAndIsKeptAside) {
    const std::string good =
        R"({"id":"3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5C","name":"n","placements":[]})";
    std::size_t kept = 0;
    for (const std::string bad :
         {R"({"id":"not-a-uuid","name":"n","placements":[]})", R"({"name":"n","placements":[]})",
          R"({"id":"3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5D","placements":[]})",
          R"({"id":"3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5D","name":"n"})",
          R"({"id":"3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5D","name":"n","placements":{}})",
          R"({"id":"3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5D","name":"n","placements":[],"combo":{}})",
          R"({"id":"3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5D","name":"n","placements":[{}]})",
          R"({"id":"3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5D","name":"n","placements":[
              {"bundleID":"x","title":"t","screen":0.5,"unit":[[0,0],[1,1]]}]})",
          R"({"id":"3F2B8C1E-7D4A-4E6B-9A0C-5D1E2F3A4B5D","name":"n","placements":[
              {"bundleID":"x","title":"t","screen":0,"unit":[0,0,1,1]}]})",
          R"("text")", R"(1)", R"()"}) {
        std::string list = "[";
        list.append(good).append(",").append(bad).append("]");
        put(list);
        EXPECT_TRUE(store.load().empty()) << bad;
        EXPECT_EQ(defaults.keptAside().size(), kept) << "reading keeps nothing aside";
        store.save({});
        EXPECT_EQ(defaults.keptAside().size(), ++kept) << bad;
    }
    defaults.setString(preference::arrangements, "not data");
    EXPECT_TRUE(store.load().empty());
    store.save({});
    EXPECT_EQ(defaults.keptAside().size(), ++kept);
    store.save({});
    EXPECT_EQ(defaults.keptAside().size(), kept);
}

TEST_F(ArrangementStoreTest, EverySaveIsAnnouncedOnceAlsoAFailedOne) {
    store.save({});
    EXPECT_EQ(posts, 1);
    store.save({});
    EXPECT_EQ(posts, 2) << "also when nothing changed";

    auto impossible = named("n");
    impossible.placements.push_back(
        {"x", "t", 0, {std::numeric_limits<double>::infinity(), 0, 1, 1}});
    store.save(std::vector{impossible});
    store.save(std::vector{named("\xFF")});
    EXPECT_EQ(posts, 4);
    EXPECT_EQ(stored(), "[]");
}

TEST_F(ArrangementStoreTest, AddingRenamingAndRemoving) {
    const auto first = named("Arrangement 1");
    const auto third = named("Arrangement 3");
    addArrangement(store, first);
    addArrangement(store, third);
    EXPECT_EQ(nextArrangementName(store.load().size()), "Arrangement 3");

    renameArrangement(store, third.id, "Desk");
    EXPECT_EQ(findArrangement(store.load(), third.id) != nullptr, true);
    EXPECT_EQ(store.load()[1].name, "Desk");
    posts = 0;
    renameArrangement(store, Uuid::random(), "Nobody");
    EXPECT_EQ(posts, 0);

    addArrangement(store, first);
    removeArrangement(store, first.id);
    ASSERT_EQ(store.load().size(), 1U);
    EXPECT_EQ(store.load()[0].id, third.id);
}

}  // namespace
}  // namespace tessellon
