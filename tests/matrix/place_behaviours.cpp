// Shortcuts that place one window, and those that take it back.
#include "matrix.h"

#include <array>
#include <vector>

namespace tessellon::desktop {
namespace {

struct Shortcut {
    Held held;
    Key key;
    Frame target;
};

// Every action that names a place, in the usable area below the dock.
constexpr std::array places{
    Shortcut{Held::controlAlt, Key::left, {8, 33, 948, 1039}},
    Shortcut{Held::controlAlt, Key::right, {964, 33, 948, 1039}},
    Shortcut{Held::controlAlt, Key::up, {8, 33, 1904, 516}},
    Shortcut{Held::controlAlt, Key::down, {8, 556, 1904, 516}},
    Shortcut{Held::controlAlt, Key::u, {8, 33, 948, 516}},
    Shortcut{Held::controlAlt, Key::i, {964, 33, 948, 516}},
    Shortcut{Held::controlAlt, Key::j, {8, 556, 948, 516}},
    Shortcut{Held::controlAlt, Key::k, {964, 556, 948, 516}},
    Shortcut{Held::controlAlt, Key::d, {8, 33, 631, 1039}},
    Shortcut{Held::controlAlt, Key::f, {646, 33, 628, 1039}},
    Shortcut{Held::controlAlt, Key::g, {1281, 33, 631, 1039}},
    Shortcut{Held::controlAlt, Key::e, {8, 33, 1266, 1039}},
    Shortcut{Held::controlAlt, Key::t, {646, 33, 1266, 1039}},
    Shortcut{Held::controlAlt, Key::enter, {8, 33, 1904, 1039}},
    Shortcut{Held::controlAltShift, Key::enter, {48, 73, 1824, 959}},
};
constexpr Shortcut restoring{Held::controlAlt, Key::backspace, {}};

constexpr Frame original{240, 160, 903, 640};

class PlaceTest : public MatrixTest {
  protected:
    /// Sends a window there and notes where it went.
    bool send(Row row, Subject subject, xcb_window_t window, const Shortcut& shortcut,
              const Frame& wanted) {
        const Frame before = frameOf(window);
        desktop().windows().activate(window);
        desktop().keyboard().combination(shortcut.held, shortcut.key);
        return notePlace(row, subject, window, wanted, before);
    }
    Frame frameOf(xcb_window_t window) {
        return desktop().windows().visibleFrame(window).value_or(Frame{});
    }
};

TEST_P(PlaceTest, everyPlaceAndBack) {
    if (!begin({Row::places, Row::restore})) {
        return;
    }
    program().start();
    for (const Subject subject : textOf(Row::places).subjects) {
        const xcb_window_t window = startSubject(subject, original);
        if (subject == Subject::maximized) {
            desktop().windows().maximize(window);
        }
        const Frame first = frameOf(window);
        for (const Shortcut& place : places) {
            if (!send(Row::places, subject, window, place, place.target)) {
                break;
            }
        }
        send(Row::restore, subject, window, restoring, first);
        desktop().windows().close(window);
    }
}

INSTANTIATE_TEST_SUITE_P(On, PlaceTest, everyWindowManager(), windowManagerName);

}  // namespace
}  // namespace tessellon::desktop
