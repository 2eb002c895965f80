// What opens over the windows and has the keyboard meanwhile: the launcher, and the panel of the
// status item; and shortcuts while a lock is on.
#include "harness/tray.h"
#include "matrix.h"
#include "menu_fixture.h"
#include "typing_terminal.h"

#include <vector>

namespace tessellon::desktop {
namespace {

constexpr Frame original{100, 300, 700, 450};

// The panel that opens here lies clear of the windows.
constexpr Position pointerHome{1600, 40};
// Over the window in front, where the focus follows the pointer.
constexpr Position inFront{300, 500};

// What the locks are to the server, in the state of the keyboard.
constexpr unsigned capsLock = XCB_MOD_MASK_LOCK;
constexpr unsigned numLock = XCB_MOD_MASK_2;

class PanelMatrixTest : public MenuTesting<MatrixTest> {
  protected:
    /// Types a key after what was typed before, and notes whether it and nothing else arrives in
    /// the terminal, which is in front still.
    void noteKeyboardIsBack(Row row, const TypingTerminal& terminal) {
        const auto before = terminal.text();
        const auto after = terminal.textAfter(Key::slash);
        const bool isActive = desktop().windows().active() == terminal.window();
        note(row, Subject::wholeCells,
             !isActive               ? "not in front any more"
             : after != before + "/" ? "keys went astray"
                                     : exact);
    }

    bool launcherIsOpen() { return pictureOfWidth(launcherWidth).has_value(); }
    void openLauncher() {
        program().waitUntilIdle();
        desktop().keyboard().combination({Key::rightSuper}, Key::slash);
        EXPECT_TRUE(waitUntil([&] { return launcherIsOpen(); }));
    }
    void expectLauncherCloses() {
        EXPECT_TRUE(waitUntil([&] { return !launcherIsOpen(); }));
    }
    void type(const std::vector<Key>& keys) {
        for (const Key key : keys) {
            desktop().keyboard().tap(key);
        }
    }
    /// Presses the key of a lock; these are on then.
    void toggleLock(Key key, unsigned locked) {
        desktop().keyboard().tap(key);
        auto* const connection = desktop().x().connection();
        EXPECT_TRUE(waitUntil([&] {
            const Reply<xcb_query_pointer_reply_t> state(xcb_query_pointer_reply(
                connection, xcb_query_pointer(connection, desktop().x().root()), nullptr));
            return state && (state->mask & (capsLock | numLock)) == locked;
        })) << "the key does not lock";
    }
    void noteInFront(Row row, xcb_window_t window) {
        program().waitUntilIdle();
        note(row, Subject::plain,
             desktop().windows().active() == window ? exact : "not in front any more");
    }
};

TEST_P(PanelMatrixTest, launcher) {
    begin({Row::launcher});
    program().start();
    desktop().pointer().jumpTo(inFront);
    const auto clock = startSubject(Subject::plain, original);
    desktop().windows().activate(clock);
    openLauncher();
    noteInFront(Row::launcher, clock);
    type({Key::u});
    notePlace(Row::launcher, Subject::plain, clock, topLeft, original);
    expectLauncherCloses();
    openLauncher();
    type({Key::m, Key::a, Key::x, Key::enter});
    notePlace(Row::launcher, Subject::plain, clock, usableArea, topLeft);
    expectLauncherCloses();
    noteInFront(Row::launcher, clock);

    const TypingTerminal terminal(desktop(), original);
    openLauncher();
    type({Key::escape});
    expectLauncherCloses();
    noteKeyboardIsBack(Row::launcher, terminal);
    // Faster than anybody can follow.
    desktop().keyboard().combinationThenTyped({Key::rightSuper}, Key::slash,
                                              {Key::m, Key::a, Key::x, Key::enter});
    EXPECT_EQ(desktop().windows().settleWithinIncrements(terminal.window(), usableArea),
              usableArea);
    expectLauncherCloses();
    noteKeyboardIsBack(Row::launcher, terminal);
}

TEST_P(PanelMatrixTest, panel) {
    begin({Row::panel, Row::trayIcon});
    if (!programExists(trayProgram(TrayKind::tint2))) {
        GTEST_SKIP() << trayProgram(TrayKind::tint2) << " is not installed";
    }
    program().start();
    const auto clock = startSubject(Subject::plain, original);
    desktop().windows().activate(clock);
    const auto shown = openedAt(pointerHome);
    noteInFront(Row::panel, clock);
    click(shown.tile(MenuTile::rightHalf));
    notePlace(Row::panel, Subject::plain, clock, rightHalf, original);
    EXPECT_TRUE(waitUntilClosed());
    noteInFront(Row::panel, clock);
    opened();
    type({Key::tab, Key::enter});
    notePlace(Row::panel, Subject::plain, clock, leftHalf, rightHalf);
    EXPECT_TRUE(waitUntilClosed());

    const TypingTerminal terminal(desktop(), original);
    opened();
    type({Key::m, Key::escape});
    EXPECT_TRUE(waitUntilClosed());
    noteKeyboardIsBack(Row::panel, terminal);

    desktop().windows().activate(clock);
    startTray(desktop(), TrayKind::tint2, TrayPlace::bottom);
    const auto icon = [&] { return findTrayIcon(desktop().x(), "Tessellon").value_or(Frame{}); };
    // The tray makes room for it a moment after it has taken it in.
    EXPECT_TRUE(waitUntil([&] {
        const Frame before = icon();
        program().waitUntilIdle();
        return icon() == before && before.width >= 16 &&
               before.y >= desktop().x().height() - trayHeight;
    })) << "the tray does not show the icon";
    letTheLastClosePass();
    click({icon().x + icon().width / 2, icon().y + icon().height / 2});
    EXPECT_TRUE(waitUntilOpen());
    program().waitUntilIdle();
    noteInFront(Row::trayIcon, clock);
    const auto beside = panel();
    note(Row::trayIcon, Subject::plain,
         beside && beside->bottom() <= desktop().x().height() - trayHeight ? exact
                                                                           : "covers the tray");
    type({Key::escape});
    EXPECT_TRUE(waitUntilClosed());
    noteInFront(Row::trayIcon, clock);
}

TEST_P(PanelMatrixTest, locks) {
    begin({Row::locks});
    program().start();
    const auto clock = startSubject(Subject::plain, original);
    desktop().windows().activate(clock);
    const auto press = [&](Key key, const Frame& wanted) {
        const auto before = desktop().windows().visibleFrame(clock).value_or(Frame{});
        desktop().keyboard().combination(Held::controlAlt, key);
        notePlace(Row::locks, Subject::plain, clock, wanted, before);
    };
    toggleLock(Key::capsLock, capsLock);
    press(Key::left, leftHalf);
    toggleLock(Key::numLock, capsLock | numLock);
    press(Key::u, topLeft);
    openLauncher();
    type({Key::i});
    notePlace(Row::locks, Subject::plain, clock, topRight, topLeft);
    expectLauncherCloses();
    toggleLock(Key::capsLock, numLock);
    press(Key::right, rightHalf);
    toggleLock(Key::numLock, 0);
}

INSTANTIATE_TEST_SUITE_P(On, PanelMatrixTest, everyWindowManager(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
