// Shortcuts that place one window, and those that take it back.
#include "matrix.h"
#include "place_shortcuts.h"

#include <array>
#include <map>

namespace tessellon::desktop {
namespace {

constexpr Frame original{240, 160, 903, 640};

/// In the middle of the usable area; on whole pixels it may grow by one.
Frame centered(const Frame& frame) {
    const int width = frame.width + (usableArea.width - frame.width) % 2;
    const int height = frame.height + (usableArea.height - frame.height) % 2;
    return {usableArea.x + (usableArea.width - width) / 2,
            usableArea.y + (usableArea.height - height) / 2, width, height};
}

using PlaceTest = MatrixTest;

TEST_P(PlaceTest, everyPlaceAndBack) {
    begin({Row::places, Row::restore});
    program().start();
    for (const Subject subject : textOf(Row::places).subjects) {
        const xcb_window_t window = startSubject(subject, original);
        if (subject == Subject::maximized && !maximize(Row::places, window)) {
            note(Row::restore, subject, none);
            continue;
        }
        const Frame first = frameOf(window);
        if (subject == Subject::minimumSize) {
            const Frame third{8, 33, 631, 1039};
            EXPECT_GT(atLeastSmallest(window, third).width, third.width) << "it fits everywhere";
        }
        // One that is maximized would keep all of its size.
        if (subject != Subject::maximized) {
            sendAndNote(Row::places, subject, window, Held::controlAlt, Key::c, centered(first));
        }
        for (const Shortcut& place : placeShortcuts) {
            if (!sendAndNote(Row::places, subject, window, place.held, place.key, place.target)) {
                break;
            }
        }
        sendAndNote(Row::restore, subject, window, Held::controlAlt, Key::backspace, first);
        desktop().windows().close(window);
    }
}

TEST_P(PlaceTest, severalTimesTheSame) {
    begin({Row::cycle});
    program().start();
    struct Step {
        Key key;
        Frame target;
    };
    constexpr Step half{Key::left, {8, 33, 948, 1039}};
    constexpr std::array steps{
        half,
        Step{Key::left, {8, 33, 631, 1039}},
        Step{Key::left, {8, 33, 1266, 1039}},
        half,
        Step{Key::right, {964, 33, 948, 1039}},
        Step{Key::right, {1281, 33, 631, 1039}},
        Step{Key::right, {646, 33, 1266, 1039}},
    };
    for (const Subject subject : textOf(Row::cycle).subjects) {
        const xcb_window_t window = startSubject(subject, original);
        for (const auto& [key, target] : steps) {
            if (!sendAndNote(Row::cycle, subject, window, Held::controlAlt, key, target)) {
                break;
            }
            program().waitUntilIdle();
        }
        desktop().windows().close(window);
    }
}

TEST_P(PlaceTest, backAfterARestart) {
    begin({Row::restoreAfterRestart});
    program().start();
    struct Known {
        xcb_window_t window;
        Frame first;
    };
    std::map<Subject, Known> windows;
    for (const Subject subject : textOf(Row::restoreAfterRestart).subjects) {
        const xcb_window_t window = startSubject(subject, original);
        if (subject == Subject::maximized && !maximize(Row::restoreAfterRestart, window)) {
            continue;
        }
        windows[subject] = {window, frameOf(window)};
        desktop().windows().activate(window);
        desktop().keyboard().combination(Held::controlAlt, Key::i);
        EXPECT_EQ(desktop().windows().settleWithinIncrements(window, topRight), topRight);
    }
    program().waitUntilIdle();
    EXPECT_EQ(program().stop(), (ProcessEnd{.exitCode = 0, .signal = std::nullopt}));
    program().start();
    for (const auto& [subject, known] : windows) {
        sendAndNote(Row::restoreAfterRestart, subject, known.window, Held::controlAlt,
                    Key::backspace, known.first);
    }
}

INSTANTIATE_TEST_SUITE_P(On, PlaceTest, everyWindowManager(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
