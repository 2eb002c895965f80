// Windows that the user's rules leave alone, and settings that change while the program runs.
#include "desktop_fixture.h"

namespace tessellon::desktop {
namespace {

constexpr Frame original{300, 200, 700, 500};

using RulesTest = WindowManagerTest;

TEST_P(RulesTest, smallWindowsStayUnlessTheRuleIsOff) {
    useProgram();
    const Frame small{300, 200, 399, 300};
    const xcb_window_t window = startClock(small);
    EXPECT_EQ(afterPress(window, Held::controlAlt, Key::left), small);
    const Frame justLargeEnough{300, 200, 400, 300};
    ASSERT_EQ(desktop().windows().place(window, justLargeEnough), justLargeEnough);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    ASSERT_EQ(desktop().windows().place(window, small), small);
    program().change({{"ignoreSmall", false}});
    program().waitUntilIdle();
    EXPECT_EQ(snap(window, Held::controlAlt, Key::u, topLeft), topLeft);
}

INSTANTIATE_TEST_SUITE_P(On, RulesTest, testedWindowManagers(), windowManagerName);

using SettingsTest = DesktopTest;

TEST_F(SettingsTest, ignoredApplicationsAreNotTouched) {
    useProgram({{"ignored", std::string("org.example.other\n\n  XClock \n")}});
    const xcb_window_t clock = startClock(original);
    const xcb_window_t editor = desktop().startWithWindow({"mousepad"});
    EXPECT_EQ(afterPress(clock, Held::controlAlt, Key::left), original);
    EXPECT_EQ(snap(editor, Held::controlAlt, Key::left, leftHalf), leftHalf);
    // By the name of its desktop entry this time, while the program runs.
    program().change({{"ignored", std::string("org.xfce.mousepad")}});
    program().waitUntilIdle();
    EXPECT_EQ(afterPress(editor, Held::controlAlt, Key::u), leftHalf);
    EXPECT_EQ(snap(clock, Held::controlAlt, Key::u, topLeft), topLeft);
}

TEST_F(SettingsTest, gapsAndPauseAreReadAtEveryAction) {
    useProgram({{"gap", 0.0}, {"padding", 0.0}});
    const xcb_window_t window = startClock(original);
    const Frame withoutGaps{0, 25, 960, 1055};
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, withoutGaps), withoutGaps);
    program().change({{"paused", true}});
    program().waitUntilIdle();
    EXPECT_EQ(afterPress(window, Held::controlAlt, Key::u), withoutGaps);
    program().change({{"paused", false}, {"gap", 8.0}, {"padding", 8.0}});
    program().waitUntilIdle();
    EXPECT_EQ(snap(window, Held::controlAlt, Key::u, topLeft), topLeft);
}

TEST_F(SettingsTest, anUnreadableFileIsKeptAsideAndReported) {
    useDesktop();
    programMaySpeak();
    program().change({{"gap", 20.0}});
    const std::filesystem::path file = program().settingsFile();
    std::filesystem::resize_file(file, file_size(file) / 2);
    program().start();
    const xcb_window_t window = startClock(original);
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    program().waitUntilIdle();
    EXPECT_TRUE(program().settings().has_value());
    EXPECT_NE(program().standardError(), "");
    int others = 0;
    for (const auto& entry : std::filesystem::directory_iterator(file.parent_path())) {
        others += entry.path() != file ? 1 : 0;
    }
    EXPECT_EQ(others, 1) << "the unreadable file is kept";
}

}  // namespace
}  // namespace tessellon::desktop
