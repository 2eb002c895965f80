// What is recorded of the windows on the screen.
#include "arrangements/capture.h"

#include "arrangements/apply.h"
#include "engine/engine_fixture.h"
#include "fakes/counting_displays.h"

namespace tessellon {
namespace {

using Placement = Arrangement::Placement;

class CaptureTest : public EngineTest {
  protected:
    /// The usable area of the screen, less the default edge gap.
    static constexpr Rect usable{8, 33, 1904, 1039};

    std::vector<Placement> capture() {
        const auto arrangement = captureArrangement(engine(), "Arrangement 1");
        return arrangement ? arrangement->placements : std::vector<Placement>{};
    }

    Rect unitOf(const Rect& frame) {
        const auto window = open(editor, frame);
        const auto unit = capture().at(0).unit;
        desktop_.close(window);
        return unit;
    }

    static Rect fraction(double x, double y, double width, double height) {
        return {usable.x + x * usable.width, usable.y + y * usable.height, width * usable.width,
                height * usable.height};
    }
};

TEST_F(CaptureTest, RecordsVisibleWindowsFrontFirst) {
    open(editor, usable, "notes");
    open(browser, fraction(0.5, 0, 0.5, 1), "");
    const auto arrangement = captureArrangement(engine(), "Mine");
    ASSERT_TRUE(arrangement);
    EXPECT_EQ(arrangement->name, "Mine");
    EXPECT_NE(arrangement->id, Uuid());
    EXPECT_EQ(arrangement->combo, std::nullopt);
    EXPECT_EQ(arrangement->placements,
              (std::vector<Placement>{{"com.browser", "", 0, {0.5, 0, 0.5, 1}},
                                      {"com.editor", "notes", 0, {0, 0, 1, 1}}}));
    EXPECT_EQ(desktop_.accessibility().readsOutsideOperations(), 0);
}

TEST_F(CaptureTest, ClampsToTheUsableArea) {
    const auto right = unitOf(fraction(0.9, 0, 0.4, 1));
    EXPECT_DOUBLE_EQ(right.x, 0.9);
    EXPECT_DOUBLE_EQ(right.width, 0.1);
    EXPECT_EQ(unitOf(fraction(0.98, 0, 0.5, 0.5)).width, 0.05);
    EXPECT_EQ(unitOf(fraction(-0.2, -0.1, 0.5, 0.5)).origin(), (Point{0, 0}));
    EXPECT_EQ(unitOf({-100, -100, 9000, 9000}), (Rect{0, 0, 1, 1}));
}

TEST_F(CaptureTest, LeavesOutWhatTheUserDoesNotSeeOrHasNoIdentity) {
    EXPECT_EQ(captureArrangement(engine(), "n"), std::nullopt);
    launch(300, std::nullopt);
    launch(400, "com.tray", ActivationPolicy::accessory);
    launch(500, "com.hidden");
    desktop_.application(500)->info.hidden = true;
    launch(600, "com.ignored");
    toggleIgnored(defaults_, "com.ignored");
    for (const Pid pid : {300, 400, 500, 600}) {
        open(pid, usable);
    }
    at(open(editor, usable)).minimized = true;
    at(open(editor, usable)).subrole = "AXDialog";
    EXPECT_EQ(captureArrangement(engine(), "n"), std::nullopt);
}

TEST_F(CaptureTest, WorksWhilePausedAndWithoutTheWindowServersList) {
    defaults_.setBool(preference::paused, true);
    desktop_.setWindowListAvailable(false);
    open(browser, usable, "b");
    open(editor, usable, "a");
    const auto placements = capture();
    ASSERT_EQ(placements.size(), 2U);
    EXPECT_EQ(placements[0].title, "a") << "in the order of the applications";
}

TEST_F(CaptureTest, NumbersDisplaysFromLeftToRight) {
    // The primary display is the right one.
    desktop_.setScreens({screen(1, {0, 0, 1000, 1000}, {0, 0, 1000, 1000}),
                         screen(2, {-1000, 0, 1000, 1000}, {-1000, 0, 1000, 1000})});
    open(editor, {100, 100, 500, 500});
    open(browser, {-900, 100, 500, 500});
    const auto placements = capture();
    ASSERT_EQ(placements.size(), 2U);
    EXPECT_EQ(placements[0].screen, 0);
    EXPECT_EQ(placements[1].screen, 1);
}

TEST_F(CaptureTest, ManyWindowsTakeOneLookAtTheDisplays) {
    CountingDisplays displays(services());
    WindowEngine counted(displays.services());
    for (int i = 0; i < 8; ++i) {
        open(editor, usable, std::to_string(i));
    }
    const auto arrangement = captureArrangement(counted, "n");
    ASSERT_TRUE(arrangement);
    EXPECT_EQ(displays.looks(), 1);
    applyArrangement(counted, *arrangement);
    EXPECT_EQ(displays.looks(), 2);
}

TEST_F(CaptureTest, BrokenTitlesDoNotSpoilTheArrangement) {
    open(editor, usable, "bro\xFFken");
    at(open(browser, usable)).title.reset();
    const auto placements = capture();
    ASSERT_EQ(placements.size(), 2U);
    EXPECT_EQ(placements[0].title, "");
    EXPECT_EQ(placements[1].title, "bro\uFFFDken");
}

}  // namespace
}  // namespace tessellon
