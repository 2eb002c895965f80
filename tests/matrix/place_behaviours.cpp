// Shortcuts that place one window, and those that take it back.
#include "matrix.h"
#include "place_shortcuts.h"

#include <array>
#include <map>

namespace tessellon::desktop {
namespace {

constexpr Frame original{240, 160, 903, 640};

using PlaceTest = MatrixTest;

TEST_P(PlaceTest, everyPlaceAndBack) {
    if (!begin({Row::places, Row::restore})) {
        return;
    }
    program().start();
    for (const Subject subject : textOf(Row::places).subjects) {
        const xcb_window_t window = startSubject(subject, original);
        if (subject == Subject::maximized && !maximize(Row::places, window)) {
            note(Row::restore, subject, none);
            continue;
        }
        const Frame first = frameOf(window);
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
    if (!begin({Row::cycle})) {
        return;
    }
    program().start();
    const Frame half{8, 33, 948, 1039};
    const Frame third{8, 33, 631, 1039};
    const Frame twoThirds{8, 33, 1266, 1039};
    for (const Subject subject : textOf(Row::cycle).subjects) {
        const xcb_window_t window = startSubject(subject, original);
        for (const Frame& size : {half, third, twoThirds, half}) {
            if (!sendAndNote(Row::cycle, subject, window, Held::controlAlt, Key::left, size)) {
                break;
            }
            program().waitUntilIdle();
        }
        desktop().windows().close(window);
    }
}

TEST_P(PlaceTest, backAfterARestart) {
    if (!begin({Row::restoreAfterRestart})) {
        return;
    }
    program().start();
    std::map<Subject, xcb_window_t> windows;
    for (const Subject subject : textOf(Row::restoreAfterRestart).subjects) {
        windows[subject] = startSubject(subject, original);
        const Frame topRight{964, 33, 948, 516};
        EXPECT_EQ(snap(windows[subject], Held::controlAlt, Key::i, topRight), topRight);
    }
    program().waitUntilIdle();
    EXPECT_EQ(program().stop(), (ProcessEnd{.exitCode = 0, .signal = std::nullopt}));
    program().start();
    for (const auto& [subject, window] : windows) {
        sendAndNote(Row::restoreAfterRestart, subject, window, Held::controlAlt, Key::backspace,
                    original);
    }
}

INSTANTIATE_TEST_SUITE_P(On, PlaceTest, everyWindowManager(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
