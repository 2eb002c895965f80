// Where the actions put a window, to the point.
#include "engine/placement.h"

#include "engine/snap_action.h"
#include "engine_fixture.h"

#include <limits>
#include <set>

namespace tessellon {
namespace {

constexpr Rect usual{8, 33, 1904, 1039};

struct Worked {
    SnapAction action;
    Rect target;
};

class WorkedValues : public testing::TestWithParam<Worked> {};

TEST_P(WorkedValues, ComeOutToThePoint) {
    const auto unit = unitRect(GetParam().action);
    ASSERT_TRUE(unit);
    EXPECT_EQ(placeUnit(*unit, usual, 8), GetParam().target);
}

INSTANTIATE_TEST_SUITE_P(Grid, WorkedValues,
                         testing::Values(Worked{SnapAction::leftHalf, {8, 33, 948, 1039}},
                                         Worked{SnapAction::rightHalf, {964, 33, 948, 1039}},
                                         Worked{SnapAction::topHalf, {8, 33, 1904, 516}},
                                         Worked{SnapAction::bottomHalf, {8, 556, 1904, 516}},
                                         Worked{SnapAction::topLeft, {8, 33, 948, 516}},
                                         Worked{SnapAction::topRight, {964, 33, 948, 516}},
                                         Worked{SnapAction::bottomLeft, {8, 556, 948, 516}},
                                         Worked{SnapAction::bottomRight, {964, 556, 948, 516}},
                                         Worked{SnapAction::leftThird, {8, 33, 631, 1039}},
                                         Worked{SnapAction::centerThird, {646, 33, 628, 1039}},
                                         Worked{SnapAction::rightThird, {1281, 33, 631, 1039}},
                                         Worked{SnapAction::leftTwoThirds, {8, 33, 1266, 1039}},
                                         Worked{SnapAction::rightTwoThirds, {646, 33, 1266, 1039}},
                                         Worked{SnapAction::maximize, {8, 33, 1904, 1039}}),
                         [](const auto& test) { return std::string(rawValue(test.param.action)); });

TEST(Placement, QuartersTileAnEvenAreaAndOverlapOnAnOddOne) {
    const Rect even{0, 0, 1000, 800};
    double covered = 0;
    for (const auto action : actionGroups[1]) {
        covered += placeUnit(*unitRect(action), even, 0).area();
    }
    EXPECT_EQ(covered, even.area());

    const Rect odd{0, 0, 1001, 800};
    const Rect left = placeUnit(*unitRect(SnapAction::topLeft), odd, 0);
    const Rect right = placeUnit(*unitRect(SnapAction::topRight), odd, 0);
    EXPECT_EQ(left.maxX() - right.minX(), 1);
}

TEST(Placement, MarginOnlyWhereEnoughIsLeft) {
    EXPECT_EQ(placeWithMargin(usual, 40), (Rect{48, 73, 1824, 959}));
    EXPECT_EQ(placeWithMargin({0, 0, 279, 900}, 40), (Rect{0, 0, 279, 900}));
    EXPECT_EQ(placeWithMargin({0, 0, 280, 900}, 40), (Rect{0, 0, 280, 900}));
    EXPECT_EQ(placeWithMargin({0, 0, 281, 231}, 40), (Rect{40, 40, 201, 151}));
    EXPECT_EQ(placeWithMargin({0, 0, 281, 230}, 40), (Rect{0, 0, 281, 230}));
}

TEST(Placement, CentreKeepsTheSizeUnlessItIsTooLarge) {
    EXPECT_EQ(placeCentered({3, 4, 800, 600}, usual), (Rect{560, 252, 800, 601}));
    EXPECT_EQ(placeCentered({-500, 0, 3000, 600}, usual), (Rect{8, 252, 1904, 601}));
}

TEST(Placement, OtherAreaKeepsTheShareOfFreeRoom) {
    const Rect from{0, 0, 1000, 800};
    const Rect to{1000, 100, 500, 400};
    EXPECT_EQ(placeInOtherArea({0, 0, 300, 200}, from, to), (Rect{1000, 100, 300, 200}));
    EXPECT_EQ(placeInOtherArea({700, 600, 300, 200}, from, to), (Rect{1200, 300, 300, 200}));
    EXPECT_EQ(placeInOtherArea({350, 300, 300, 200}, from, to), (Rect{1100, 200, 300, 200}));
    // Partly off its screen: inside the other one.
    EXPECT_EQ(placeInOtherArea({-100, 700, 300, 200}, from, to), (Rect{1000, 300, 300, 200}));
    // Wider than the other area, and than its own.
    EXPECT_EQ(placeInOtherArea({100, 0, 800, 200}, from, to), (Rect{1000, 100, 500, 200}));
    EXPECT_EQ(placeInOtherArea({-10, 0, 1200, 200}, from, to), (Rect{1000, 100, 500, 200}));
}

TEST(Placement, StoredUnitsAreMadeFitForUse) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(clampedUnit({0.5, 0, 0.8, 1}), (Rect{0.5, 0, 0.5, 1}));
    EXPECT_EQ(clampedUnit({0.98, -1, 0.4, 7}), (Rect{0.98, 0, 0.05, 1}));
    EXPECT_EQ(clampedUnit({nan, 2, nan, 0.5}), (Rect{0, 1, 0.05, 0.05}));
}

TEST(SnapAction, IsFoundByItsStoredNameOnly) {
    std::set<std::string_view> names;
    for (const auto action : allSnapActions) {
        EXPECT_EQ(snapActionFromRawValue(rawValue(action)), action);
        names.insert(rawValue(action));
    }
    EXPECT_EQ(names.size(), 19U);
    for (const auto* other : {"", "LeftHalf", "leftHalf ", "Left Half", "snap.leftHalf"}) {
        EXPECT_EQ(snapActionFromRawValue(other), std::nullopt) << other;
    }
}

TEST(SnapAction, CyclesThroughThreeSizesOfTwoActions) {
    using enum SnapAction;
    EXPECT_EQ(cycleSuccessor(leftHalf, leftHalf), leftThird);
    EXPECT_EQ(cycleSuccessor(leftThird, leftHalf), leftTwoThirds);
    EXPECT_EQ(cycleSuccessor(leftTwoThirds, leftHalf), leftHalf);
    EXPECT_EQ(cycleSuccessor(rightThird, rightHalf), rightTwoThirds);
    EXPECT_EQ(cycleSuccessor(rightHalf, leftHalf), std::nullopt);
    EXPECT_EQ(cycleSuccessor(leftHalf, leftThird), std::nullopt);
    EXPECT_EQ(cycleSuccessor(topHalf, topHalf), std::nullopt);
}

}  // namespace
}  // namespace tessellon
