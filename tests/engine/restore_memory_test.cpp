// What is remembered of windows, how it is stored, and which window is known again.
#include "engine/restore_memory.h"

#include "engine/restore_memory_json.h"
#include "engine_fixture.h"
#include "fakes/stored_text.h"

#include <span>
#include <string_view>

namespace tessellon {
namespace {

using enum SnapAction;

class RestoreMemoryTest : public EngineTest {
  protected:
    RestoreMemory& memory() { return engine().memory(); }

    std::string stored() { return storedText(defaults_, preference::restoreMemory); }

    void store(const std::vector<Memory>& records) {
        defaults_.setObject(preference::restoreMemory, encodeMemories(records).value());
    }

    static Memory record(std::string bundleID, std::string title, const Rect& original,
                         const Rect& taken) {
        return {Uuid::random(), std::move(bundleID), std::move(title), original, taken};
    }

    static constexpr Rect before{120, 80, 900, 640};
    static constexpr Rect snapped{8, 33, 948, 1039};
};

TEST_F(RestoreMemoryTest, StoresTheExactForm) {
    const auto id = Uuid::parse("0123abcd-0000-4000-8000-00000000000f").value();
    const auto json = encodeMemories(std::vector<Memory>{
        {id, "com.editor", "a/b \"c\"\n\xC3\xA9", {120, 80, 900, 640}, {8.5, -33, 0.1, 1e21}}});
    ASSERT_TRUE(json);
    EXPECT_EQ(textOf(*json),
              R"([{"id":"0123ABCD-0000-4000-8000-00000000000F","bundleID":"com.editor",)"
              R"("title":"a\/b \"c\"\n)"
              "\xC3\xA9"
              R"(","original":[[120,80],[900,640]],"snapped":[[8.5,-33],[0.1,1e+21]]}])");
    EXPECT_EQ(encodeMemories(decodeMemories(*json).value()), json);
    EXPECT_EQ(textOf(encodeMemories({}).value()), "[]");
}

TEST_F(RestoreMemoryTest, ReadsWholeListsOnly) {
    const std::string good =
        R"({"snapped":[[1,2],[3,4]],"original":[[5,6],[7,8]],"title":"","more":null,)"
        R"("bundleID":"b","id":"0123abcd-0000-4000-8000-00000000000f"})";
    const auto decode = [](const std::string& json) { return decodeMemories(dataOf(json)); };
    ASSERT_TRUE(decode("[" + good + "]"));
    EXPECT_EQ(decode("[" + good + "]")->at(0).original, (Rect{5, 6, 7, 8}));
    EXPECT_EQ(decode("[" + good + "," + good + "]")->size(), 1U) << "an id twice";
    for (const auto& bad : {std::string(), std::string("{}"), std::string("null"), "[" + good,
                            "[" + good + ",1]", "[" + good + "]]", std::string("[{}]")}) {
        EXPECT_EQ(decode(bad), std::nullopt) << bad;
    }
    for (const auto& [from, to] : {std::pair{"[[1,2],[3,4]]", "[[1,2],[3]]"},
                                   std::pair{"[[1,2],[3,4]]", "[[1,2],[3,\"4\"]]"},
                                   std::pair{"[[1,2],[3,4]]", "[[1e999,2],[3,4]]"},
                                   std::pair{"\"b\"", "7"}, std::pair{"0123abcd", "0123abc"}}) {
        auto bad = good;
        bad.replace(bad.find(from), std::string_view(from).size(), to);
        EXPECT_EQ(decode("[" + bad + "]"), std::nullopt) << bad;
    }
    std::string deep(100000, '[');
    EXPECT_EQ(decode(deep), std::nullopt);
}

TEST_F(RestoreMemoryTest, AWindowIsKnownAgainAfterARelaunch) {
    const auto window = openFocused(before);
    engine().snap(leftHalf);
    relaunch();
    engine().snap(rightHalf);
    relaunch();
    at(window).frame.x += 7.5;
    engine().snap(restore);
    EXPECT_EQ(at(window).frame, before);
    EXPECT_EQ(stored(), "[]");
}

TEST_F(RestoreMemoryTest, RecognisesByApplicationTitleAndFrame) {
    store({record("com.editor", "Caf\xC3\xA9", before, snapped)});
    const auto window = open(editor, snapped, "Cafe\xCC\x81");
    const auto find = [this](const Element& element) {
        relaunch();
        return memory().findMemory(element).has_value();
    };
    EXPECT_TRUE(find(window)) << "the same title, composed differently";
    EXPECT_FALSE(find(open(browser, snapped, "Caf\xC3\xA9")));
    at(window).frame.height += 8;
    EXPECT_FALSE(find(window));
    at(window).frame = snapped;
    at(window).title = "Cafe";
    EXPECT_FALSE(find(window));
    at(window).title = "Caf\xC3\xA9";
    at(window).answersInstead[Attribute::size] = std::nullopt;
    EXPECT_FALSE(find(window));
}

TEST_F(RestoreMemoryTest, TwinsGetOneRecordEachTheNewestFirst) {
    const Rect older{1, 1, 500, 400};
    const Rect newer{2, 2, 500, 400};
    store({record("com.editor", "Twin", older, snapped),
           record("com.editor", "Twin", newer, snapped)});
    const auto first = open(editor, snapped, "Twin");
    const auto second = open(editor, snapped, "Twin");
    const auto third = open(editor, snapped, "Twin");
    EXPECT_EQ(memory().originalFrame(first), newer);
    EXPECT_EQ(memory().originalFrame(second), older);
    EXPECT_EQ(memory().originalFrame(third), std::nullopt);
    EXPECT_EQ(memory().originalFrame(first), newer);
    memory().forgetWindow(first);
    EXPECT_FALSE(memory().isBound(first));
    EXPECT_EQ(memory().originalFrame(first), std::nullopt) << "the other one is taken";
}

TEST_F(RestoreMemoryTest, LaunchDropsRecordsOfApplicationsThatDoNotRun) {
    launch(300, std::nullopt);
    const auto kept = record("com.browser", "kept", before, snapped);
    store({record("com.gone", "", before, snapped), kept, record("", "", before, snapped)});
    EXPECT_EQ(memory().records(), std::vector{kept});
    EXPECT_EQ(stored(), textOf(encodeMemories(std::vector{kept}).value()));
    EXPECT_TRUE(defaults_.keptAside().empty());
}

TEST_F(RestoreMemoryTest, KeepsAsideWhatItCannotRead) {
    const PropertyValue broken = dataOf("[{\"id\":");
    defaults_.setObject(preference::restoreMemory, broken);
    EXPECT_TRUE(memory().records().empty());
    ASSERT_EQ(defaults_.keptAside().size(), 1U);
    EXPECT_EQ(defaults_.keptAside().at(0).value, broken);
    EXPECT_EQ(stored(), "[]");

    relaunch();
    defaults_.setString(preference::restoreMemory, "[]");
    EXPECT_TRUE(memory().records().empty());
    EXPECT_EQ(defaults_.keptAside().size(), 2U) << "a text is not what is stored there";
}

TEST_F(RestoreMemoryTest, NeverReplacesWhatItCouldNeitherReadNorCopy) {
    defaults_.setObject(preference::restoreMemory, dataOf("[{]"));
    defaults_.setRefusesCopies(true);
    engine().snap(leftHalf, open(editor, before));
    EXPECT_EQ(stored(), "[{]");
    defaults_.setRefusesCopies(false);
    engine().snap(leftHalf, open(browser, before));
    ASSERT_EQ(defaults_.keptAside().size(), 1U);
    EXPECT_EQ(defaults_.keptAside().at(0).value, PropertyValue(dataOf("[{]")));
    EXPECT_EQ(memory().records().size(), 2U);
    EXPECT_NE(stored(), "[{]");
}

TEST_F(RestoreMemoryTest, AnEditFromOutsideIsTakenOverOrKeptAside) {
    const auto window = open(editor, before);
    engine().snap(leftHalf, window);
    auto edited = memory().records();
    edited.at(0).original = {1, 2, 900, 700};
    defaults_.edit(preference::restoreMemory, *encodeMemories(edited));
    engine().snap(restore, window);
    EXPECT_EQ(at(window).frame, (Rect{1, 2, 900, 700}));

    engine().snap(leftHalf, window);
    defaults_.edit(preference::restoreMemory, dataOf("mine"));
    EXPECT_TRUE(memory().records().empty());
    engine().snap(topHalf, window);
    ASSERT_EQ(defaults_.keptAside().size(), 1U);
    EXPECT_EQ(defaults_.keptAside().at(0).value, PropertyValue(dataOf("mine")));

    // An edit of another key is none of this one.
    defaults_.edit(preference::gap, 0.0);
    EXPECT_EQ(memory().records().size(), 1U);
}

TEST_F(RestoreMemoryTest, AnEditThatIsTakenBackIsTakenOverToo) {
    const auto window = open(editor, before);
    engine().snap(leftHalf, window);
    const auto ours = *encodeMemories(memory().records());
    defaults_.edit(preference::restoreMemory, dataOf("[]"));
    EXPECT_TRUE(memory().records().empty());
    defaults_.edit(preference::restoreMemory, ours);
    EXPECT_EQ(memory().records().size(), 1U);
    engine().snap(topHalf, window);
    EXPECT_EQ(memory().records().at(0).original, before);
}

TEST_F(RestoreMemoryTest, TheOldestBeyondTwoHundredGo) {
    std::vector<Memory> old;
    for (int i = 0; i < 200; ++i) {
        old.push_back(record("com.editor", std::to_string(i), before, snapped));
    }
    store(old);
    const auto first = open(editor, snapped, "0");
    EXPECT_TRUE(memory().findMemory(first));
    engine().snap(leftHalf, open(browser, before));
    EXPECT_EQ(memory().records().size(), 200U);
    EXPECT_EQ(memory().records().front().title, "1");
    EXPECT_FALSE(memory().isBound(first));
    desktop_.accessibility().clearWrites();
    engine().snap(restore, first);
    EXPECT_TRUE(desktop_.accessibility().writes().empty());
}

TEST_F(RestoreMemoryTest, FiftyBindingsLookForWindowsThatAreGone) {
    std::vector<Element> windows;
    for (int i = 0; i < 50; ++i) {
        windows.push_back(open(editor, before, std::to_string(i)));
        engine().snap(leftHalf, windows.back());
    }
    desktop_.close(windows[3]);
    desktop_.close(windows[4]);
    at(windows[5]).answersInstead[Attribute::size] = std::nullopt;
    // The identifier lives on, the window does not.
    const auto reused = desktop_.openReusing(windows[4], {});
    EXPECT_NE(reused, windows[4]);
    EXPECT_EQ(memory().records().size(), 50U);
    engine().snap(leftHalf, open(browser, before));
    EXPECT_EQ(memory().records().size(), 48U);
    EXPECT_TRUE(memory().isBound(windows[6]));
    EXPECT_FALSE(memory().isBound(windows[5]));
    EXPECT_EQ(memory().records().at(3).title, "6");
}

TEST_F(RestoreMemoryTest, KeepsWhatAWindowHadEvenWithoutIdentityOrProperTitle) {
    launch(300, std::nullopt);
    const auto nameless = open(300, before, "\xFF");
    engine().snap(leftHalf, nameless);
    ASSERT_EQ(memory().records().size(), 1U);
    EXPECT_EQ(memory().records().at(0).bundleID, "");
    EXPECT_NE(stored().find("\"title\":\"\xEF\xBF\xBD\""), std::string::npos);
    at(nameless).title = "later";
    engine().snap(topHalf, nameless);
    EXPECT_EQ(memory().records().at(0).title, "later");
    engine().snap(restore, nameless);
    EXPECT_EQ(at(nameless).frame, before);
}

TEST_F(RestoreMemoryTest, DefersStoringUntilTheLastTokenGoes) {
    const auto window = open(editor, before);
    memory();
    {
        const auto outer = memory().deferSaves();
        {
            const auto inner = memory().deferSaves();
            memory().rememberWindow(before, window);
        }
        EXPECT_EQ(stored(), "[]");
    }
    EXPECT_EQ(decodeMemories(dataOf(stored()))->size(), 1U);
}

}  // namespace
}  // namespace tessellon
