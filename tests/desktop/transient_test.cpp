// What is on the screen when the machine sleeps, a display comes or goes, or the window manager
// dies: it is taken away, and the program goes on as if nothing had been.
#include "dragging.h"
#include "harness/logind.h"
#include "menu_panel.h"

#include <array>
#include <optional>
#include <string>
#include <tuple>

namespace tessellon::desktop {
namespace {

enum class Shown { grid, launcher, menu };
enum class Turn { sleep, displays, windowManager };

class TransientTest : public Dragging<DesktopTest>,
                      public ::testing::WithParamInterface<std::tuple<Shown, Turn>> {
  protected:
    void show(Shown what, xcb_window_t window) {
        switch (what) {
            case Shown::grid:
                pressTitleBar(window);
                dragBy(60, 60);
                pressCommand();
                ASSERT_TRUE(waitUntilShown(grid));
                break;
            case Shown::launcher:
                desktop().keyboard().combination({Key::rightSuper}, Key::slash);
                ASSERT_TRUE(waitUntilOneIsWide(launcherWidth));
                break;
            case Shown::menu: {
                Program second(desktop());
                second.launch();
                EXPECT_EQ(second.process().waitForEnd(patience),
                          (ProcessEnd{.exitCode = 0, .signal = std::nullopt}));
                ASSERT_TRUE(waitUntilOneIsWide(MenuPanel::width));
                break;
            }
        }
    }

    bool waitUntilOneIsWide(int width) {
        return waitUntil([&] { return pictureOfWidth(width).has_value(); });
    }

    void happen(Turn turn) {
        switch (turn) {
            case Turn::sleep:
                logind_->sleepAndWake();
                break;
            case Turn::displays:
                desktop().run({"xrandr", "--setmonitor", "beamer", "640/169x480/127+0+0", "none"});
                ASSERT_TRUE(waitUntilNothingIsShown());
                desktop().run({"xrandr", "--delmonitor", "beamer"});
                break;
            case Turn::windowManager:
                desktop().killWindowManager();
                ASSERT_TRUE(waitUntilNothingIsShown());
                desktop().startWindowManager("openbox");
                break;
        }
    }

    void useLogind() {
        logind_.emplace(desktop());
        ASSERT_TRUE(waitUntil([&] { return logind_->isHeard(); }));
    }

    std::optional<Logind> logind_;
};

TEST_P(TransientTest, nothingStaysOnTheScreen) {
    const auto [what, turn] = GetParam();
    useProgram();
    useLogind();
    const xcb_window_t window = startClock(original);
    desktop().windows().activate(window);
    show(what, window);
    happen(turn);
    EXPECT_TRUE(waitUntilNothingIsShown());

    if (what == Shown::grid) {
        ASSERT_TRUE(waitUntil([&] { return frameOf(window) != Frame{}; })) << "taken over again";
        const Frame dragged = frameOf(window);
        releaseCommand();
        drop();
        program().waitUntilIdle();
        EXPECT_EQ(frameOf(window), dragged) << "the drag was given up";
    }
    EXPECT_EQ(snap(window, Held::controlAlt, Key::left, leftHalf), leftHalf);
    show(what, window);
    if (what == Shown::grid) {
        dragTo(bottomRightZone);
        drop();
        EXPECT_EQ(desktop().windows().settle(window, bottomRight), bottomRight);
        releaseCommand();
    } else {
        desktop().keyboard().tap(Key::escape);
    }
    EXPECT_TRUE(waitUntilNothingIsShown());
}

std::string nameOf(const ::testing::TestParamInfo<TransientTest::ParamType>& info) {
    constexpr std::array shown{"grid", "launcher", "menu"};
    constexpr std::array turns{"sleep", "displays", "windowManager"};
    return std::string(shown.at(static_cast<std::size_t>(std::get<0>(info.param)))) + "_" +
           turns.at(static_cast<std::size_t>(std::get<1>(info.param)));
}

INSTANTIATE_TEST_SUITE_P(
    With, TransientTest,
    ::testing::Combine(::testing::Values(Shown::grid, Shown::launcher, Shown::menu),
                       ::testing::Values(Turn::sleep, Turn::displays, Turn::windowManager)),
    nameOf);

}  // namespace
}  // namespace tessellon::desktop
