// Which window goes where when an arrangement is applied, and what the engine remembers of it.
#include "arrangements/apply.h"

#include "arrangements/capture.h"
#include "engine/engine_fixture.h"

#include <cmath>

namespace tessellon {
namespace {

class ApplyTest : public EngineTest {
  protected:
    static constexpr Rect start{300, 300, 700, 500};
    static constexpr Rect left{8, 33, 952, 1039};
    static constexpr Rect right{960, 33, 952, 1039};
    static constexpr Rect leftUnit{0, 0, 0.5, 1};
    static constexpr Rect rightUnit{0.5, 0, 0.5, 1};

    void apply(std::vector<Arrangement::Placement> placements) {
        applyArrangement(engine(), {Uuid::random(), "n", std::move(placements), std::nullopt});
    }

    Rect frameAfter(std::int64_t display, const Rect& unit) {
        const auto window = open(editor, start);
        apply({{"com.editor", "", display, unit}});
        const auto frame = at(window).frame;
        desktop_.close(window);
        return frame;
    }
};

TEST_F(ApplyTest, GivesBackWhatWasCaptured) {
    const auto a = open(editor, left, "a");
    const auto b = open(browser, right, "b");
    const auto arrangement = captureArrangement(engine(), "n");
    ASSERT_TRUE(arrangement);
    at(a).frame = start;
    at(b).frame = {0, 100, 400, 400};
    applyArrangement(engine(), *arrangement);
    EXPECT_EQ(at(a).frame, left);
    EXPECT_EQ(at(b).frame, right);
}

TEST_F(ApplyTest, ChoosesByTitleThenInOrder) {
    const auto b = open(editor, start, "B");
    const auto a = open(editor, start, "caf\u00E9");
    const auto other = open(browser, start, "caf\u00E9");
    apply({{"com.editor", "cafe\u0301", 0, leftUnit}, {"com.editor", "B", 0, rightUnit}});
    EXPECT_EQ(at(a).frame, left);
    EXPECT_EQ(at(b).frame, right);
    EXPECT_EQ(at(other).frame, start);

    apply({{"com.editor", "", 0, leftUnit},
           {"com.editor", "gone", 0, rightUnit},
           {"com.editor", "caf\u00E9", 0, {0, 0, 1, 1}}});
    EXPECT_EQ(at(b).frame, left) << "the first of the application";
    EXPECT_EQ(at(a).frame, right) << "the next one left, though its own placement comes later";
}

TEST_F(ApplyTest, InstancesOfOneApplicationShareTheirWindows) {
    launch(300, "com.editor");
    const auto first = open(editor, start);
    const auto second = open(300, start);
    apply({{"com.editor", "", 0, leftUnit}, {"com.editor", "", 0, rightUnit}});
    EXPECT_EQ(at(first).frame, left);
    EXPECT_EQ(at(second).frame, right);
}

TEST_F(ApplyTest, AWindowThatCannotBeReadStaysUsedUp) {
    const auto silent = open(editor, start, "silent");
    const auto next = open(editor, start, "next");
    at(silent).answersInstead[Attribute::position] = std::nullopt;
    apply({{"com.editor", "silent", 0, leftUnit}, {"com.editor", "silent", 0, rightUnit}});
    EXPECT_EQ(at(silent).frame, start);
    EXPECT_EQ(at(next).frame, right);
    EXPECT_EQ(engine().memory().records().size(), 1U);
}

TEST_F(ApplyTest, StoredDisplaysAndFractionsAreMadeFit) {
    desktop_.setScreens({screen(1, {0, 0, 1000, 1000}, {0, 0, 1000, 1000}),
                         screen(2, {1000, 0, 1000, 1000}, {1000, 0, 1000, 1000})});
    defaults_.setDouble(preference::padding, 0);
    EXPECT_EQ(frameAfter(5, {0, 0, 1, 1}), (Rect{1000, 0, 1000, 1000}));
    EXPECT_EQ(frameAfter(-1, {0, 0, 1, 1}), (Rect{0, 0, 1000, 1000}));
    EXPECT_EQ(frameAfter(std::numeric_limits<std::int64_t>::max(), {0.5, 0, 0.8, 1}),
              (Rect{1500, 0, 500, 1000}));
    EXPECT_EQ(frameAfter(0, {std::nan(""), -3, INFINITY, 1e300}), (Rect{0, 0, 50, 1000}));
    EXPECT_EQ(frameAfter(0, {1.0 / 3.0, 0, 1.0 / 3.0, 0.5}), (Rect{333, 0, 334, 500}))
        << "rounded outward";
}

TEST_F(ApplyTest, MovedWindowsCanBeRestored) {
    const auto fresh = open(editor, start, "fresh");
    const auto snapped = open(browser, start, "snapped");
    engine().snap(SnapAction::maximize, snapped);
    at(fresh).minimumSize = {1000, 400};
    apply({{"com.editor", "", 0, leftUnit}, {"com.browser", "", 0, rightUnit}});

    const auto& records = engine().memory().records();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_EQ(records[1].snapped, at(fresh).frame) << "what the window really took";
    EXPECT_EQ(at(fresh).frame.width, 1000);
    for (const auto& window : {fresh, snapped}) {
        engine().snap(SnapAction::restore, window);
        EXPECT_EQ(at(window).frame.origin(), start.origin());
    }
    EXPECT_EQ(at(snapped).frame, start);
}

TEST_F(ApplyTest, NextShortcutStartsACycleAnewEvenIfNothingMoved) {
    openFocused(start);
    engine().snap(SnapAction::leftHalf);
    ASSERT_TRUE(engine().last());
    apply({{"com.nobody", "", 0, leftUnit}});
    EXPECT_FALSE(engine().last());
    EXPECT_TRUE(engine().lastSnap());
}

TEST_F(ApplyTest, NothingHappensWhilePausedOrWithoutDisplays) {
    const auto window = openFocused(start);
    engine().snap(SnapAction::leftHalf);
    const auto frame = at(window).frame;
    defaults_.setBool(preference::paused, true);
    apply({{"com.editor", "", 0, rightUnit}});
    defaults_.setBool(preference::paused, false);
    desktop_.setScreens({});
    apply({{"com.editor", "", 0, rightUnit}});
    EXPECT_EQ(at(window).frame, frame);
    EXPECT_TRUE(engine().last());
}

TEST_F(ApplyTest, HiddenAndAccessoryApplicationsStayWhereTheyAre) {
    launch(300, "com.tray", ActivationPolicy::accessory);
    launch(400, "com.hidden");
    desktop_.application(400)->info.hidden = true;
    const auto tray = open(300, start);
    const auto hidden = open(400, start);
    apply({{"com.tray", "", 0, leftUnit}, {"com.hidden", "", 0, leftUnit}});
    EXPECT_EQ(at(tray).frame, start);
    EXPECT_EQ(at(hidden).frame, start);
}

TEST_F(ApplyTest, ManyWindowsAreWaitedForOnce) {
    std::vector<Arrangement::Placement> placements;
    for (int i = 0; i < 8; ++i) {
        open(editor, start, std::to_string(i));
        placements.push_back({"com.editor", std::to_string(i), 0, leftUnit});
    }
    int stores = 0;
    engine();
    const auto token = defaults_.changed().subscribe([&](auto) { ++stores; });
    apply(placements);
    EXPECT_EQ(desktop_.accessibility().waitsForWrites(), 1);
    EXPECT_EQ(desktop_.accessibility().readsOutsideOperations(), 0);
    EXPECT_EQ(stores, 1);
    EXPECT_EQ(engine().memory().records().size(), 8U);
}

TEST_F(ApplyTest, AWindowThatDiesMeanwhileDoesNotStopTheOthers) {
    // Dying at any moment: while it is chosen, read, moved or read back.
    for (int reads = 0; reads < 20; ++reads) {
        const auto dying = open(editor, start, "dying");
        const auto other = open(browser, start, "other");
        at(dying).readsBeforeItDies = reads;
        apply({{"com.editor", "dying", 0, leftUnit}, {"com.browser", "other", 0, rightUnit}});
        EXPECT_EQ(at(other).frame, right);
        desktop_.close(dying);
        desktop_.close(other);
    }
}

}  // namespace
}  // namespace tessellon
