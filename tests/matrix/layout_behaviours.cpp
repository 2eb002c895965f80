// Several displays, several windows: display moves, tiling, and arrangements.
#include "matrix.h"
#include "menu_fixture.h"

#include <array>
#include <map>
#include <vector>

namespace tessellon::desktop {
namespace {

using DisplayMoveTest = MatrixTest;

TEST_P(DisplayMoveTest, toTheNextDisplayAndBack) {
    begin({Row::displayMoves}, Monitors::described({{0, 0, 1280, 1080}, {1280, 0, 640, 1080}}));
    program().start();
    struct Step {
        Held held;
        Key key;
        Frame target;
    };
    constexpr std::array steps{
        Step{Held::controlAlt, Key::enter, {8, 33, 1264, 1039}},
        Step{Held::controlAltSuper, Key::right, {1288, 33, 624, 1039}},
        Step{Held::controlAltSuper, Key::right, {8, 33, 624, 1039}},
        Step{Held::controlAltSuper, Key::left, {1288, 33, 624, 1039}},
        Step{Held::controlAlt, Key::down, {1288, 556, 624, 516}},
        Step{Held::controlAltSuper, Key::left, {8, 556, 624, 516}},
    };
    for (const Subject subject : textOf(Row::displayMoves).subjects) {
        const xcb_window_t window = startSubject(subject, {100, 100, 503, 440});
        for (const Step& step : steps) {
            if (!sendAndNote(Row::displayMoves, subject, window, step.held, step.key,
                             step.target)) {
                break;
            }
        }
        desktop().windows().close(window);
    }
}

INSTANTIATE_TEST_SUITE_P(On, DisplayMoveTest, everyWindowManager(), windowManagerName);

using TileTest = MatrixTest;

TEST_P(TileTest, fillsTheDisplayWithWhatIsSeenThere) {
    begin({Row::tile});
    program().change({{"tilingEnabled", true}});
    program().start();
    auto& windows = desktop().windows();
    const Frame original{240, 160, 903, 640};
    const Frame other{300, 200, 801, 602};
    const xcb_window_t own = startSubject(Subject::ownDecorations, original);
    windows.showDesktop(1);
    const xcb_window_t elsewhere = startSubject(Subject::otherDesktop, other);
    windows.showDesktop(0);
    const xcb_window_t icon = startSubject(Subject::minimized, other);
    const bool minimizes = minimize(Row::tile, icon);
    if (!minimizes) {
        windows.close(icon);
        waitUntil([&] { return !desktop().x().exists(icon); });
    }
    const xcb_window_t dialog = startSubject(Subject::dialog, original);
    const xcb_window_t qt = startSubject(Subject::qt, original);
    const xcb_window_t plain = startSubject(Subject::plain, original);
    const xcb_window_t full = startSubject(Subject::fullScreen, {});
    const bool hidesAll = !windows.isShown(plain);
    if (hidesAll) {
        note(Row::tile, Subject::fullScreen, hidesOthers);
        windows.close(full);
        EXPECT_TRUE(waitUntil([&] { return windows.isShown(plain); }));
    }
    for (const xcb_window_t window : {own, qt, plain}) {
        windows.activate(window);
    }
    program().waitUntilIdle();
    const Frame ofFull = hidesAll ? Frame{} : frameOf(full);
    const Frame ofDialog = frameOf(dialog);
    desktop().keyboard().combination(Held::controlAltSuper, Key::t);
    notePlace(Row::tile, Subject::plain, plain, {8, 33, 1139, 1039}, original);
    notePlace(Row::tile, Subject::qt, qt, {1154, 33, 758, 516}, original);
    notePlace(Row::tile, Subject::ownDecorations, own, {1154, 556, 758, 516}, original);
    if (!hidesAll) {
        noteUnmoved(Row::tile, Subject::fullScreen, full, ofFull);
    }
    noteUnmoved(Row::tile, Subject::dialog, dialog, ofDialog);
    if (minimizes) {
        note(Row::tile, Subject::minimized, windows.isShown(icon) ? "shown" : exact);
        windows.activate(icon);
        noteUnmoved(Row::tile, Subject::minimized, icon, other);
    }
    windows.showDesktop(1);
    noteUnmoved(Row::tile, Subject::otherDesktop, elsewhere, other);
}

INSTANTIATE_TEST_SUITE_P(On, TileTest, everyWindowManager(), windowManagerName);

using ArrangementTest = MenuTesting<MatrixTest>;

TEST_P(ArrangementTest, bringsWindowsBack) {
    begin({Row::arrangement});
    program().start();
    auto& windows = desktop().windows();
    const Frame anywhere{300, 200, 801, 602};
    const xcb_window_t icon = startSubject(Subject::minimized, anywhere);
    const bool minimizes = minimize(Row::arrangement, icon);
    if (!minimizes) {
        windows.close(icon);
    }
    struct Saved {
        Subject subject;
        Key key;
        Frame frame;
        xcb_window_t window = XCB_WINDOW_NONE;
    };
    std::array saved{
        Saved{Subject::ownDecorations, Key::k, {964, 556, 948, 516}},
        Saved{Subject::qt, Key::i, {964, 33, 948, 516}},
        Saved{Subject::plain, Key::u, {8, 33, 948, 516}},
        Saved{Subject::wholeCells, Key::j, {8, 556, 948, 516}},
    };
    for (Saved& each : saved) {
        each.window = startSubject(each.subject, anywhere);
        windows.activate(each.window);
        desktop().keyboard().combination(Held::controlAlt, each.key);
        EXPECT_EQ(windows.settleWithinIncrements(each.window, each.frame), each.frame);
        each.frame = frameOf(each.window);
    }
    click(openedAt({960, 300}).saveCurrent());
    EXPECT_TRUE(waitUntilClosed());
    program().waitUntilIdle();
    for (const Saved& each : saved) {
        windows.place(each.window, anywhere);
    }
    click(opened().arrangement(0));
    EXPECT_TRUE(waitUntilClosed());
    for (const Saved& each : saved) {
        notePlace(Row::arrangement, each.subject, each.window, each.frame, anywhere);
    }
    if (minimizes) {
        note(Row::arrangement, Subject::minimized, windows.isShown(icon) ? "shown" : exact);
        windows.activate(icon);
        noteUnmoved(Row::arrangement, Subject::minimized, icon, anywhere);
    }
}

INSTANTIATE_TEST_SUITE_P(On, ArrangementTest, everyWindowManager(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
