// The shortcuts that name a place, and the frames that those are on the desktop of the tests.
#pragma once

#include "harness/frame.h"
#include "harness/keyboard.h"

#include <array>

namespace tessellon::desktop {

struct Shortcut {
    Held held;
    Key key;
    Frame target;
};

/// Every one of them, in the usable area below the dock.
inline constexpr std::array placeShortcuts{
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

}  // namespace tessellon::desktop
