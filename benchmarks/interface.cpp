// What the user sees of the interface, timed from outside: from a key or a motion to the changed
// pixels on the screen, and what becomes of the memory after some thousands of drags and openings.
#include "contenders.h"
#include "harness/keyboard.h"
#include "harness/pointer.h"
#include "harness/program.h"
#include "harness/tray.h"
#include "harness/wait.h"
#include "process_usage.h"
#include "sections.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace tessellon::benchmarks {
namespace {

using desktop::Frame;
using desktop::Key;
using desktop::Position;
using desktop::PrivateDesktop;

constexpr int rounds = 25;
constexpr Milliseconds mostForGrid{25};
constexpr int menuRounds = 10;
constexpr int soakDrags = 1000;
constexpr int soakOpenings = 1000;
constexpr int roundsBeforeSoak = 25;
constexpr double mostGrowthInMegabytes = 1;

constexpr Frame windowFrame{700, 400, 640, 440};
constexpr Position titleBar{900, 408};
/// In the zones of the top half and of the right half.
constexpr Position inTopHalf{960, 100};
constexpr Position inRightHalf{1600, 560};
/// Columns of pixels across the upper borders of these zones (left of their labels), and across the
/// launcher's middle.
constexpr Position topHalfBorder{640, 0};
constexpr Position rightHalfBorder{1440, 236};
constexpr Position middle{960, 540};

class Screen {
  public:
    explicit Screen(PrivateDesktop& desktop) : x_(desktop.x()) {}

    /// The pixels of a short column.
    std::vector<std::uint8_t> column(Position top) {
        constexpr std::uint16_t length = 12;
        auto* connection = x_.connection();
        const desktop::Reply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
            connection,
            xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, x_.root(),
                          static_cast<std::int16_t>(top.x), static_cast<std::int16_t>(top.y), 1,
                          length, UINT32_MAX),
            nullptr));
        if (!reply) {
            throw std::runtime_error("the screen cannot be read");
        }
        const auto* bytes = xcb_get_image_data(reply.get());
        return {bytes, bytes + xcb_get_image_data_length(reply.get())};
    }

    /// Does something and gives the time until the column looks different.
    template <typename Action>
    Milliseconds untilChanged(Position top, Action action) {
        const auto before = column(top);
        const auto start = Clock::now();
        action();
        const auto deadline = start + desktop::patience;
        while (column(top) == before) {
            if (Clock::now() > deadline) {
                throw std::runtime_error("nothing changes on the screen at " +
                                         std::to_string(top.x) + ", " + std::to_string(top.y));
            }
        }
        return Clock::now() - start;
    }

    /// Waits until the column looks like this.
    void await(Position top, const std::vector<std::uint8_t>& wanted) {
        if (!desktop::waitUntil([&] { return column(top) == wanted; })) {
            throw std::runtime_error("the screen does not become what it was");
        }
    }

  private:
    desktop::XSession& x_;
};

class Hands {
  public:
    Hands(PrivateDesktop& desktop, desktop::Program& program)
        : desktop_(desktop),
          program_(program),
          window_(desktop.startWithWindow({"xterm", "-bg", "white"})) {
        desktop_.windows().place(window_, windowFrame);
    }

    void beginDrag(Position to) {
        desktop_.windows().place(window_, windowFrame);
        desktop_.pointer().jumpTo(titleBar);
        desktop_.pointer().press();
        // The first steps as slow as a hand's: the window manager and the program are with it.
        desktop_.pointer().moveTo({titleBar.x + 40, titleBar.y + 40});
        desktop::waitUntil([&] { return desktop_.windows().visibleFrame(window_) != windowFrame; });
        desktop_.pointer().moveTo(to);
    }
    /// Lets go of the window and waits for the window manager to end its drag.
    void drop() {
        desktop_.pointer().release();
        awaitFreeKeyboard();
    }

    void openLauncher() {
        desktop_.keyboard().press(Key::rightSuper);
        desktop_.keyboard().tap(Key::slash);
        desktop_.keyboard().release(Key::rightSuper);
    }

    /// Until the program has drawn all that it has to.
    void settle() { program_.waitUntilIdle(); }

    /// Until something of the program's is shown, or nothing any more.
    void awaitPanels(bool shown) {
        if (!desktop::waitUntil([&] {
                return desktop_.windows().unmanagedOf(program_.process().pid()).empty() != shown;
            })) {
            throw std::runtime_error(shown ? "nothing is shown" : "something stays on the screen");
        }
    }

    void activate() { desktop_.windows().activate(window_); }
    PrivateDesktop& desktop() { return desktop_; }

  private:
    /// The window manager holds the keyboard while it drags, and no shortcut is seen before it lets
    /// go, which is a moment after the button went up.
    void awaitFreeKeyboard() {
        auto& keyboard = desktop_.keyboard();
        if (!desktop::waitUntil([&] { return keyboard.grab(); })) {
            throw std::runtime_error("the window manager does not let go of the keyboard");
        }
        keyboard.ungrab();
    }

    PrivateDesktop& desktop_;
    desktop::Program& program_;
    xcb_window_t window_;
};

void measureGrid(Report& report, Hands& hands, const std::string& how) {
    Screen screen(hands.desktop());
    auto& keyboard = hands.desktop().keyboard();
    auto& pointer = hands.desktop().pointer();
    std::vector<Milliseconds> first;
    std::vector<Milliseconds> again;
    std::vector<Milliseconds> zone;
    hands.beginDrag(inTopHalf);
    // The program may have been too late for the first motions, and may take some that come at once
    // for none.
    for (const int aside : {0, 10, 0}) {
        pointer.moveTo({inTopHalf.x + aside, inTopHalf.y});
        hands.settle();
    }
    const auto topHalf = screen.column(topHalfBorder);
    const auto rightHalf = screen.column(rightHalfBorder);
    for (int i = 0; i < rounds; ++i) {
        (i == 0 ? first : again).push_back(screen.untilChanged(topHalfBorder, [&] {
            keyboard.press(Key::leftSuper);
        }));
        hands.settle();
        zone.push_back(screen.untilChanged(rightHalfBorder, [&] { pointer.jumpTo(inRightHalf); }));
        keyboard.release(Key::leftSuper);
        pointer.jumpTo(inTopHalf);
        screen.await(topHalfBorder, topHalf);
        screen.await(rightHalfBorder, rightHalf);
    }
    hands.drop();
    report.add(timeRow("Super down in a drag → grid seen, the first time, " + how, first));
    report.add(timeRow("Super down in a drag → grid seen again, " + how, again, "",
                       atMost(mostForGrid, again,
                              "95 % of the times are below " + text(percentile(again, 0.95)) +
                                  "; server and compositor draw with the processor here.")));
    report.add(timeRow("pointer enters a zone → first change seen, " + how, zone));
}

void measureLauncher(Report& report, Hands& hands, const std::string& how) {
    Screen screen(hands.desktop());
    std::vector<Milliseconds> first;
    std::vector<Milliseconds> again;
    hands.activate();
    hands.settle();
    const auto closed = screen.column(middle);
    for (int i = 0; i < rounds; ++i) {
        (i == 0 ? first : again).push_back(screen.untilChanged(middle, [&] {
            hands.openLauncher();
        }));
        hands.settle();
        hands.desktop().keyboard().tap(Key::escape);
        // The window below paints itself anew.
        screen.await(middle, closed);
    }
    report.add(timeRow("chord → launcher seen, the first time, " + how, first));
    report.add(timeRow("chord → launcher seen again, " + how, again));
}

void dragOnce(Hands& hands) {
    auto& desktop = hands.desktop();
    hands.beginDrag(inTopHalf);
    desktop.keyboard().press(Key::leftSuper);
    desktop.pointer().moveTo(inRightHalf);
    desktop.keyboard().release(Key::leftSuper);
    hands.drop();
}

void openOnce(Hands& hands) {
    hands.openLauncher();
    hands.awaitPanels(true);
    hands.desktop().keyboard().tap(Key::m);
    hands.desktop().keyboard().tap(Key::escape);
    hands.awaitPanels(false);
}

void soak(Report& report, Hands& hands, desktop::Program& program) {
    const auto settle = [&] {
        program.waitUntilIdle();
        return ownMegabytes(program.process().pid());
    };
    for (int i = 0; i < roundsBeforeSoak; ++i) {
        dragOnce(hands);
        openOnce(hands);
    }
    const double before = settle();
    for (int i = 0; i < soakDrags; ++i) {
        dragOnce(hands);
    }
    const double afterDrags = settle();
    for (int i = 0; i < soakOpenings; ++i) {
        openOnce(hands);
    }
    const double afterOpenings = settle();
    const double growth = afterOpenings - before;
    report.add({"own memory after " + std::to_string(roundsBeforeSoak) + " drags and openings",
                number(before, 1) + " MB", "", "", std::nullopt});
    report.add({"after " + std::to_string(soakDrags) + " more drags", number(afterDrags, 1) + " MB",
                "", "", std::nullopt});
    report.add(
        {"after " + std::to_string(soakOpenings) + " more openings",
         number(afterOpenings, 1) + " MB", "", "",
         Budget{"≤ " + number(mostGrowthInMegabytes, 0) + " MB more",
                growth <= mostGrowthInMegabytes, "it grew by " + number(growth, 1) + " MB."}});
}

/// The panel of the status item, pressed in a tray along the upper edge.
void measureMenu(Report& report, PrivateDesktop& desktop, const std::string& how) {
    desktop::startTray(desktop, desktop::TrayKind::tint2);
    desktop::Program program(desktop);
    program.start();
    std::optional<Frame> icon;
    if (!desktop::waitUntil(
            [&] { return (icon = desktop::findTrayIcon(desktop.x(), "Tessellon")); })) {
        throw std::runtime_error("the program has no icon in the tray");
    }
    program.waitUntilIdle();
    Screen screen(desktop);
    desktop.pointer().jumpTo({icon->x + icon->width / 2, icon->y + icon->height / 2});
    // The panel opens below the icon, or as far to the right as there is room.
    const Position inPanel{icon->x - 40, desktop::trayHeight + 200};
    const auto closed = screen.column(inPanel);
    std::vector<Milliseconds> first;
    std::vector<Milliseconds> again;
    for (int i = 0; i <= menuRounds; ++i) {
        (i == 0 ? first : again).push_back(screen.untilChanged(inPanel, [&] {
            desktop.pointer().press();
            desktop.pointer().release();
        }));
        program.waitUntilIdle();
        desktop.keyboard().tap(Key::escape);
        screen.await(inPanel, closed);
        // A press that comes sooner would count as the one that closed it.
        std::this_thread::sleep_for(std::chrono::milliseconds(400));
    }
    report.add(timeRow("press of the icon → status panel seen, the first time, " + how, first));
    report.add(timeRow("press of the icon → status panel seen again, " + how, again));
}

void measureWith(Report& report, bool withCompositor) {
    PrivateDesktop desktop;
    desktop.startWindowManager("openbox");
    if (withCompositor) {
        desktop.startCompositor();
    }
    desktop::Program program(desktop);
    program.start();
    Hands hands(desktop, program);
    program.waitUntilIdle();
    const std::string how = withCompositor ? "with a compositor" : "without a compositor";
    measureGrid(report, hands, how);
    measureLauncher(report, hands, how);
    if (!withCompositor) {
        soak(report, hands, program);
    }
    program.stop();
    measureMenu(report, desktop, how);
}

}  // namespace

void measureInterface(Report& report) {
    report.section("interface", "The interface");
    report.table("");
    measureWith(report, true);
    measureWith(report, false);
    report.note("On 1920 × 1080, from the key, the press or the motion to the changed pixels.");
}

}  // namespace tessellon::benchmarks
