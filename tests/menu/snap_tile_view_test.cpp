// How the tiles of the status item's panel move, by a clock of the test's own.
#include "menu/snap_tile_view.h"

#include "menu/menu_view_fixture.h"

#include <QAnimationDriver>
#include <cmath>
#include <numbers>

namespace tessellon {
namespace {

/// Time for Qt's animations, which passes when the test says so.
class ManualDriver : public QAnimationDriver {
  public:
    ManualDriver() { install(); }
    ~ManualDriver() override { uninstall(); }
    ManualDriver(const ManualDriver&) = delete;
    ManualDriver& operator=(const ManualDriver&) = delete;

    qint64 elapsed() const override { return time_; }
    void pass(int milliseconds) {
        QApplication::processEvents();  // what was started begins now
        time_ += milliseconds;
        advance();
    }

  private:
    qint64 time_ = 0;
};

/// Where a spring of response 0.22 and damping fraction 0.7 is after that many seconds, having left
/// 0 for 1.
double sprung(double seconds) {
    constexpr double damping = 0.7;
    const double undamped = 2 * std::numbers::pi / 0.22;
    const double damped = undamped * std::sqrt(1 - damping * damping);
    const double decay = damping * undamped;
    return 1 - std::exp(-decay * seconds) *
                   (std::cos(damped * seconds) + decay / damped * std::sin(damped * seconds));
}

TEST(SnapTileStyle, HoveringSprings) {
    ManualDriver driver;
    int changes = 0;
    SnapTileStyle style(palette::teal, [&changes] { ++changes; });
    style.setHovering(true);
    driver.pass(0);
    double seconds = 0;
    for (const int step : {20, 30, 50, 60, 40}) {
        driver.pass(step);
        seconds += step / 1000.0;
        EXPECT_NEAR(style.scale(), 1 + 0.05 * sprung(seconds), 0.0005) << seconds;
        EXPECT_NEAR(style.borderWidth(), 1.5 * sprung(seconds), 0.015) << seconds;
    }
    EXPECT_GT(changes, 4);
    driver.pass(1000);
    EXPECT_FALSE(style.isAnimating());
    EXPECT_EQ(style.scale(), 1.05);
}

TEST(SnapTileStyle, PressingEasesOutInATenthOfASecond) {
    ManualDriver driver;
    SnapTileStyle style(palette::teal, [] {});
    style.setPressed(true);
    driver.pass(0);
    driver.pass(50);
    const double half = (1 - style.scale()) / 0.05;
    EXPECT_GT(half, 0.6) << "fast at first";
    EXPECT_LT(half, 0.8);
    driver.pass(49);
    EXPECT_TRUE(style.isAnimating());
    driver.pass(1);
    EXPECT_FALSE(style.isAnimating());
    EXPECT_EQ(style.scale(), 0.95);
}

}  // namespace
}  // namespace tessellon
