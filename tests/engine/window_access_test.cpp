// Which windows may be moved, and how they are found, read and written.
#include "engine/window_access.h"

#include "engine_fixture.h"

#include <algorithm>
#include <limits>

namespace tessellon {
namespace {

class WindowAccessTest : public EngineTest {
  protected:
    WindowAccess& windows() { return engine().windows(); }

    std::vector<Element> visible() {
        std::vector<Element> elements;
        for (const auto& entry : windows().orderedVisibleWindows()) {
            elements.push_back(entry.window);
        }
        return elements;
    }

    static constexpr Rect usual{100, 100, 800, 600};
};

TEST_F(WindowAccessTest, ReadsOnlyWhatHasTheRightType) {
    const auto window = open(editor, usual);
    EXPECT_EQ(windows().readFrame(window), usual);
    EXPECT_EQ(windows().readBool(window, Attribute::title), std::nullopt);
    at(window).answersInstead[Attribute::minimized] = 1.0;
    EXPECT_EQ(windows().readBool(window, Attribute::minimized), true);
    at(window).answersInstead[Attribute::size] = Point{800, 600};
    EXPECT_EQ(windows().readFrame(window), std::nullopt);
    at(window).answersInstead[Attribute::size] =
        Size{std::numeric_limits<double>::quiet_NaN(), 600};
    EXPECT_EQ(windows().readFrame(window), std::nullopt);
    at(window).answersInstead.clear();
    at(window).title = "caf\xE9";
    EXPECT_EQ(windows().title(window), "caf\xEF\xBF\xBD");
    at(window).title.reset();
    EXPECT_EQ(windows().title(window), "");
}

TEST_F(WindowAccessTest, OnlyStandardWindowsSnap) {
    const auto window = open(editor, usual);
    EXPECT_TRUE(windows().canSnap(window));
    at(window).subrole = "AXDialog";
    EXPECT_FALSE(windows().canSnap(window));
    at(window).subrole.reset();
    EXPECT_TRUE(windows().canSnap(window));
    at(window).role.reset();
    EXPECT_FALSE(windows().canSnap(window));
    at(window).role = "AXSheet";
    EXPECT_FALSE(windows().canSnap(window));
    at(window).role = "AXWindow";
    at(window).fullScreen = true;
    EXPECT_FALSE(windows().canSnap(window));
    at(window).answersInstead[Attribute::fullScreen] = std::nullopt;
    EXPECT_TRUE(windows().canSnap(window));
    desktop_.close(window);
    EXPECT_FALSE(windows().canSnap(window));
}

TEST_F(WindowAccessTest, SmallWindowsSnapWhenTheUserSaysSo) {
    const auto window = open(editor, {0, 0, 400, 300});
    EXPECT_TRUE(windows().canSnap(window));
    at(window).frame = {0, 0, 399, 300};
    EXPECT_FALSE(windows().canSnap(window));
    at(window).frame = {0, 0, 400, 299};
    EXPECT_FALSE(windows().canSnap(window));
    at(window).answersInstead[Attribute::size] = std::nullopt;
    EXPECT_TRUE(windows().canSnap(window));
    at(window).answersInstead.clear();
    defaults_.setBool(preference::ignoreSmall, false);
    EXPECT_TRUE(windows().canSnap(window));
}

TEST_F(WindowAccessTest, IgnoredApplicationsAndOurOwnWindowsNeverSnap) {
    launch(300, std::nullopt);
    launch(MemoryDesktop::ownPid, "tessellon");
    const auto nameless = open(300, usual);
    const auto own = open(MemoryDesktop::ownPid, usual);
    const auto document = open(editor, usual);
    defaults_.setString(preference::ignored, "com.other\ncom.editor");
    EXPECT_FALSE(windows().canSnap(document));
    EXPECT_TRUE(windows().canSnap(nameless));
    EXPECT_FALSE(windows().canSnap(own));

    desktop_.focus(own);
    EXPECT_EQ(windows().focusedWindow(), std::nullopt);
    desktop_.focus(document);
    EXPECT_EQ(windows().focusedWindow(), std::nullopt);
    desktop_.focus(nameless);
    EXPECT_EQ(windows().focusedWindow(), nameless);
    EXPECT_EQ(visible(), std::vector{nameless});
}

TEST_F(WindowAccessTest, AnIgnoredApplicationIsNotEvenAsked) {
    openFocused(usual);
    toggleIgnored(defaults_, "com.editor");
    engine();
    const int before = desktop_.accessibility().reads();
    EXPECT_EQ(windows().focusedWindow(), std::nullopt);
    EXPECT_EQ(desktop_.accessibility().reads(), before);
}

TEST_F(WindowAccessTest, NothingIsFoundWithoutTrustOrAnswer) {
    const auto window = openFocused(usual);
    EXPECT_EQ(windows().focusedWindow(), window);
    desktop_.setTrusted(false);
    EXPECT_EQ(windows().focusedWindow(), std::nullopt);
    EXPECT_EQ(windows().windowUnderPointer({200, 200}), std::nullopt);
    EXPECT_TRUE(visible().empty());
    desktop_.setTrusted(true);
    desktop_.application(editor)->answers = false;
    EXPECT_EQ(windows().focusedWindow(), std::nullopt);
    EXPECT_TRUE(windows().windowsOfApp(editor).empty());
    desktop_.setFrontmost(std::nullopt);
    EXPECT_EQ(windows().focusedWindow(), std::nullopt);
}

TEST_F(WindowAccessTest, ClimbsFromAControlToItsWindow) {
    const auto window = open(editor, usual);
    auto inner = window;
    for (int depth = 0; depth < 31; ++depth) {
        inner = desktop_.addControl({inner, {200, 200, 50, 50}, "AXGroup"});
    }
    EXPECT_EQ(windows().windowUnderPointer({210, 210}), window) << "31 parents away";
    inner = desktop_.addControl({inner, {200, 200, 50, 50}});
    EXPECT_EQ(windows().windowUnderPointer({210, 210}), std::nullopt) << "too far";
    desktop_.addControl({inner, {200, 200, 50, 50}, "AXButton", /*knowsItsWindow=*/true});
    EXPECT_EQ(windows().windowUnderPointer({210, 210}), window);
    EXPECT_EQ(windows().windowUnderPointer({150, 150}), window);
    EXPECT_EQ(windows().windowUnderPointer({5, 5}), std::nullopt);

    open(browser, {200, 200, 300, 200});
    EXPECT_EQ(windows().windowUnderPointer({210, 210}), std::nullopt) << "a small one in front";
}

TEST_F(WindowAccessTest, SetsSizePositionSizeWithEnhancedInterfaceOff) {
    const auto window = open(editor, usual);
    auto& accessibility = desktop_.accessibility();
    const Element application = accessibility.applicationElement(editor);
    const Rect target{1, 2, 500, 400};
    const MemoryAccessibility::Write size{window, Attribute::size, target.size()};
    const MemoryAccessibility::Write position{window, Attribute::position, target.origin()};
    const auto enhanced = [&](bool on) {
        return MemoryAccessibility::Write{application, Attribute::enhancedUserInterface, on};
    };

    windows().setFrame(target, window);
    EXPECT_EQ(accessibility.writes(), (std::vector{size, position, size}));

    accessibility.clearWrites();
    desktop_.application(editor)->enhancedUserInterface = true;
    windows().setFrame(target, window);
    EXPECT_EQ(accessibility.writes(),
              (std::vector{enhanced(false), size, position, size, enhanced(true)}));
    EXPECT_TRUE(desktop_.application(editor)->enhancedUserInterface);
    EXPECT_EQ(windows().readFrame(window), target);
}

TEST_F(WindowAccessTest, ListsWhatTheUserSeesFrontMostFirst) {
    launch(300, "com.agent", ActivationPolicy::accessory);
    launch(400, "com.hidden");
    desktop_.application(400)->info.hidden = true;
    const auto back = open(editor, usual);
    const auto middle = open(browser, {110, 100, 800, 600});
    const auto front = open(editor, {120, 100, 800, 600});
    const auto minimized = open(editor, {130, 100, 800, 600});
    at(minimized).minimized = true;
    const auto elsewhere = open(editor, {140, 100, 800, 600});
    at(elsewhere).onCurrentWorkspace = false;
    const auto unreadable = open(browser, {150, 100, 800, 600});
    at(unreadable).answersInstead[Attribute::position] = std::nullopt;
    open(300, usual);
    open(400, usual);
    EXPECT_EQ(visible(), (std::vector{front, middle, back}));
    desktop_.raise(back);
    EXPECT_EQ(visible(), (std::vector{back, front, middle}));
    EXPECT_EQ(desktop_.accessibility().readsOutsideOperations(), 0);

    desktop_.setWindowListAvailable(false);
    EXPECT_EQ(visible(), (std::vector{back, front, elsewhere, middle}))
        << "nothing to go by: the order of the applications";
}

TEST_F(WindowAccessTest, MatchesTheListByApplicationAndFrame) {
    const auto first = open(editor, usual);
    const auto second = open(browser, usual);
    at(first).listedAs = WindowListEntry{0, editor, Rect{102.9, 97.1, 797.1, 602.9}};
    EXPECT_EQ(visible(), (std::vector{second, first}));
    at(first).listedAs->bounds->x = 103;
    EXPECT_EQ(visible(), std::vector{second}) << "3 points away";
    at(second).listedAs = WindowListEntry{0, editor, usual};
    EXPECT_EQ(visible(), std::vector{first}) << "of the other application";
    at(second).listedAs = WindowListEntry{3, browser, usual};
    EXPECT_EQ(visible(), (std::vector{first, second})) << "none matched: all kept";
    at(first).listedAs = WindowListEntry{std::nullopt, editor, usual};
    at(second).listedAs = WindowListEntry{0, browser, std::nullopt};
    EXPECT_EQ(visible(), (std::vector{first, second}));
}

TEST_F(WindowAccessTest, SurvivesWindowsThatDieBetweenReads) {
    const auto survivor = open(browser, usual);
    for (int reads = 0; reads < 9; ++reads) {
        at(open(editor, usual)).readsBeforeItDies = reads;
        const auto found = visible();
        EXPECT_TRUE(std::find(found.begin(), found.end(), survivor) != found.end()) << reads;
        for (const auto& leftover : std::vector(desktop_.application(editor)->windows)) {
            desktop_.close(leftover);
        }
    }
}

}  // namespace
}  // namespace tessellon
