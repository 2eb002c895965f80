// One window and one action.
#include "engine/window_engine.h"
#include "engine_fixture.h"

namespace tessellon {
namespace {

using enum SnapAction;

class SnapTest : public EngineTest {
  protected:
    static constexpr Rect before{120, 80, 900, 640};
    static constexpr Rect leftHalfFrame{8, 33, 948, 1039};
    static constexpr Rect leftThirdFrame{8, 33, 631, 1039};
    static constexpr Rect leftTwoThirdsFrame{8, 33, 1266, 1039};
};

TEST_F(SnapTest, MovesTheFocusedWindowAndTells) {
    const auto window = openFocused(before);
    engine().snap(leftHalf);
    EXPECT_EQ(at(window).frame, leftHalfFrame);
    EXPECT_EQ(engine().last(), (LastAction{leftHalf, leftHalfFrame}));
    EXPECT_EQ(engine().lastSnap(), (LastSnap{leftHalf, "App 100", "Screen"}));
    engine().snap(center);
    EXPECT_EQ(at(window).frame, (Rect{486, 33, 948, 1039}));
    engine().snap(almostMaximize);
    EXPECT_EQ(at(window).frame, (Rect{48, 73, 1824, 959}));
    EXPECT_EQ(desktop_.accessibility().readsOutsideOperations(), 0);
}

TEST_F(SnapTest, RepeatingTheShortcutStepsThroughTheSizes) {
    const auto window = openFocused(before);
    for (const Rect& expected :
         {leftHalfFrame, leftThirdFrame, leftTwoThirdsFrame, leftHalfFrame, leftThirdFrame}) {
        engine().snap(leftHalf);
        EXPECT_EQ(at(window).frame, expected);
    }
    engine().snap(maximize);
    engine().snap(leftHalf);
    EXPECT_EQ(at(window).frame, leftHalfFrame) << "another snap in between";
    at(window).frame.x += 2.5;
    engine().snap(leftHalf);
    EXPECT_EQ(at(window).frame, leftThirdFrame) << "moved by less than 3 points";
    at(window).frame.x += 3;
    engine().snap(leftHalf);
    EXPECT_EQ(at(window).frame, leftHalfFrame) << "moved by 3 points";
}

TEST_F(SnapTest, TheCycleBelongsToTheFrameAndNotToTheWindow) {
    openFocused(before);
    engine().snap(leftHalf);
    const auto other = openFocused(leftHalfFrame);
    engine().snap(leftHalf);
    EXPECT_EQ(at(other).frame, leftThirdFrame);
}

TEST_F(SnapTest, DoesNotCycleWhenSwitchedOffOrForANamedWindow) {
    const auto window = openFocused(before);
    engine().snap(leftHalf, window);
    engine().snap(leftHalf, window);
    EXPECT_EQ(at(window).frame, leftHalfFrame);
    defaults_.setBool(preference::cycle, false);
    engine().snap(leftHalf);
    EXPECT_EQ(at(window).frame, leftHalfFrame);
}

TEST_F(SnapTest, RestoreGivesBackTheFrameBeforeTheFirstSnap) {
    const Rect odd{120.5, 80.25, 900, 640};
    const auto window = openFocused(odd);
    engine().snap(leftHalf);
    engine().snap(topRight);
    EXPECT_EQ(engine().targetFrame(restore, window, at(window).frame), odd);
    engine().snap(restore);
    EXPECT_EQ(at(window).frame, odd);
    EXPECT_EQ(engine().last(), (LastAction{restore, odd}));
    EXPECT_TRUE(engine().memory().records().empty());

    at(window).frame = before;
    desktop_.accessibility().clearWrites();
    engine().snap(restore);
    EXPECT_TRUE(desktop_.accessibility().writes().empty());
    EXPECT_EQ(engine().last(), (LastAction{restore, odd})) << "nothing happened";
}

TEST_F(SnapTest, WritesNothingWithoutAReasonTo) {
    const auto window = openFocused(before);
    defaults_.setBool(preference::paused, true);
    engine().snap(leftHalf);
    engine().snap(leftHalf, window);
    defaults_.setBool(preference::paused, false);
    engine().snap(nextDisplay);
    engine().snap(restore);
    at(window).answersInstead[Attribute::position] = std::nullopt;
    engine().snap(leftHalf);
    at(window).answersInstead.clear();
    desktop_.setScreens({});
    engine().snap(leftHalf);
    engine().snap(center, window);
    desktop_.close(window);
    engine().snap(leftHalf);
    engine().snap(leftHalf, window);
    EXPECT_TRUE(desktop_.accessibility().writes().empty());
    EXPECT_EQ(engine().last(), std::nullopt);
    EXPECT_EQ(engine().lastSnap(), std::nullopt);
    EXPECT_TRUE(engine().memory().records().empty());
}

TEST_F(SnapTest, RecordsWhatTheWindowReallyTook) {
    const auto window = openFocused(before);
    at(window).minimumSize = {1000, 700};
    at(window).sizeIncrement = {0, 20};
    engine().snap(leftHalf);
    const Rect took{8, 33, 1000, 1020};
    EXPECT_EQ(at(window).frame, took);
    EXPECT_EQ(engine().last(), (LastAction{leftHalf, took}));
    EXPECT_EQ(engine().memory().records().at(0).snapped, took);

    at(window).refusesToMove = true;
    at(window).refusesToResize = true;
    engine().snap(bottomRight);
    EXPECT_EQ(engine().last(), (LastAction{bottomRight, took}));
}

TEST_F(SnapTest, TakesTheTargetForTheResultOfAWindowThatCannotBeReadBack) {
    const auto window = openFocused(before);
    int reads = 0;
    {
        // The same snap on a window that lives tells how many reads come before the writes.
        const auto probe = openFocused(before);
        engine().snap(leftHalf);
        reads = desktop_.accessibility().reads();
        desktop_.close(probe);
    }
    int diedAfterTheMove = 0;
    for (int lifetime = 0; lifetime <= reads; ++lifetime) {
        const auto mortal = openFocused(before);
        at(mortal).readsBeforeItDies = lifetime;
        engine().clearLast();
        engine().snap(leftHalf);
        if (engine().last()) {
            EXPECT_EQ(engine().last()->frame, leftHalfFrame) << lifetime;
            diedAfterTheMove += desktop_.window(mortal) == nullptr ? 1 : 0;
        }
        desktop_.close(mortal);
    }
    EXPECT_GT(diedAfterTheMove, 0);
    EXPECT_EQ(at(window).frame, before);
}

TEST_F(SnapTest, WaitsOnceForTheWindowAndGivesUpOnOneThatHangs) {
    auto& accessibility = desktop_.accessibility();
    accessibility.setMessagingTimeout(Seconds(0.5));
    const auto window = openFocused(before);
    engine().snap(leftHalf);
    EXPECT_EQ(accessibility.waitsForWrites(), 1);
    at(window).answerDelay = Seconds(0.75);
    accessibility.clearWrites();
    engine().snap(rightHalf);
    EXPECT_TRUE(accessibility.writes().empty());
    at(window).answers = false;
    engine().snap(rightHalf);
    EXPECT_TRUE(accessibility.writes().empty());
    EXPECT_EQ(at(window).frame, leftHalfFrame);
}

TEST_F(SnapTest, StoresOnceAndOnlyWhenTheWindowHasMoved) {
    const auto window = openFocused(before);
    engine();
    int stored = 0;
    const auto token = defaults_.changed().subscribe([&](std::string_view key) {
        EXPECT_EQ(key, preference::restoreMemory);
        EXPECT_EQ(at(window).frame, leftHalfFrame);
        ++stored;
    });
    engine().snap(leftHalf);
    EXPECT_EQ(stored, 1);
}

TEST_F(SnapTest, ReadsSettingsAnewForEverySnap) {
    const auto window = openFocused(before);
    defaults_.setDouble(preference::gap, -20);
    defaults_.setDouble(preference::padding, 0);
    engine().snap(leftHalf);
    EXPECT_EQ(at(window).frame, (Rect{0, 25, 960, 1055}));
    defaults_.setDouble(preference::gap, 20);
    engine().snap(rightHalf);
    EXPECT_EQ(at(window).frame, (Rect{970, 25, 950, 1055}));
    defaults_.setDouble(preference::almostPadding, -5);
    engine().snap(almostMaximize);
    EXPECT_EQ(at(window).frame, (Rect{0, 25, 1920, 1055}));
}

TEST_F(SnapTest, DisplayMovesGoRoundInDisplayOrder) {
    const auto display = [](std::uint64_t id, double x) {
        return screen(id, {x, 0, 1000, 800}, {x, 0, 1000, 800});
    };
    desktop_.setScreens({display(1, 0), display(2, -1000), display(3, 1000)});
    defaults_.setDouble(preference::padding, 0);
    const auto window = openFocused({0, 0, 500, 400});
    const auto moved = [&](SnapAction action) {
        engine().snap(action);
        return at(window).frame.x;
    };
    EXPECT_EQ(moved(nextDisplay), 1000);
    EXPECT_EQ(moved(nextDisplay), -1000);
    EXPECT_EQ(engine().lastSnap()->display, "Screen 2");
    EXPECT_EQ(moved(previousDisplay), 1000);
    EXPECT_EQ(moved(previousDisplay), 0);
    EXPECT_EQ(engine().memory().records().at(0).original, (Rect{0, 0, 500, 400}));
}

}  // namespace
}  // namespace tessellon
