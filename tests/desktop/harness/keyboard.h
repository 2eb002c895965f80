// Real key presses on a private server: physical keys, pressed and released as a hand would.
#pragma once

#include "harness/x_session.h"

#include <cstdint>
#include <vector>

namespace tessellon::desktop {

/// Physical keys by the code that they have on every X server with evdev key codes.
enum class Key : std::uint8_t {
    escape = 9,
    one = 10,
    backspace = 22,
    tab = 23,
    q = 24,
    e = 26,
    r = 27,
    t = 28,
    y = 29,
    u = 30,
    i = 31,
    enter = 36,
    leftControl = 37,
    a = 38,
    d = 40,
    f = 41,
    g = 42,
    h = 43,
    j = 44,
    k = 45,
    l = 46,
    leftShift = 50,
    x = 53,
    c = 54,
    m = 58,
    comma = 59,
    slash = 61,
    leftAlt = 64,
    space = 65,
    capsLock = 66,
    numLock = 77,
    up = 111,
    left = 113,
    right = 114,
    down = 116,
    pageDown = 117,
    leftSuper = 133,
    rightSuper = 134,
};

/// What is held while the last key goes down.
enum class Held { controlAlt, controlAltShift, controlAltSuper };

class Keyboard {
  public:
    explicit Keyboard(XSession& session) : x_(session) {}

    void press(Key key);
    void release(Key key);
    void tap(Key key);

    /// Presses and releases a whole combination.
    void combination(Held held, Key key);
    void combination(const std::vector<Key>& held, Key key);

    /// The same, followed by a tap of each key in `typed`, all sent to the server at once.
    void combinationThenTyped(const std::vector<Key>& held, Key key, const std::vector<Key>& typed);

    /// Takes the whole keyboard, as a program with an open menu does. True when it was given.
    bool grab();
    void ungrab();

  private:
    void fake(std::uint8_t type, Key key);

    XSession& x_;
};

}  // namespace tessellon::desktop
