// The damped spring, held against its equation of motion.
#include "ui/spring.h"

#include <algorithm>
#include <numbers>

#include <gtest/gtest.h>

namespace tessellon {
namespace {

constexpr double response = 0.22;
constexpr double damping = 0.7;
constexpr double step = 1e-4;

double speed(const Spring& spring, double at) {
    return (spring.valueAt(at + step) - spring.valueAt(at - step)) / (2 * step);
}

TEST(Spring, MovesAsItsEquationSays) {
    Spring spring(response, damping);
    spring.aim(1, 0);
    EXPECT_EQ(spring.valueAt(0), 0);
    EXPECT_NEAR(speed(spring, step), 0, 0.1);
    const double frequency = 2 * std::numbers::pi / response;
    for (double t = 0.01; t < 0.4; t += 0.01) {
        const double acceleration =
            (spring.valueAt(t + step) - 2 * spring.valueAt(t) + spring.valueAt(t - step)) /
            (step * step);
        const double pull = frequency * frequency * (1 - spring.valueAt(t)) -
                            2 * damping * frequency * speed(spring, t);
        EXPECT_NEAR(acceleration, pull, 0.05) << t;
    }
}

TEST(Spring, OvershootsALittleAndSettles) {
    Spring spring(response, damping);
    spring.aim(1, 0);
    double highest = 0;
    for (double t = 0; t < 1; t += 0.001) {
        highest = std::max(highest, spring.valueAt(t));
        if (t >= spring.settlingTime()) {
            EXPECT_NEAR(spring.valueAt(t), 1, 0.001);
        }
    }
    // exp(-π ζ / √(1 - ζ²)) of the way.
    EXPECT_NEAR(highest, 1.046, 0.001);
    EXPECT_GT(spring.settlingTime(), 0.2);
    EXPECT_LT(spring.settlingTime(), 0.5);
}

TEST(Spring, TurnsRoundWithoutAJump) {
    Spring spring(response, damping);
    EXPECT_EQ(spring.settlingTime(), 0) << "at rest";
    spring.aim(1, 0);
    const double turn = 0.05;
    const double value = spring.valueAt(turn);
    const double velocity = speed(spring, turn);
    spring.aim(0, turn);
    EXPECT_DOUBLE_EQ(spring.valueAt(0), value);
    EXPECT_NEAR(speed(spring, 0), velocity, 0.01);
    EXPECT_GT(spring.valueAt(0.01), value) << "it goes on for a moment";
    EXPECT_NEAR(spring.valueAt(spring.settlingTime()), 0, 0.001);
    EXPECT_EQ(spring.target(), 0);
}

}  // namespace
}  // namespace tessellon
