#include "harness/keyboard.h"

#include <xcb/xtest.h>

namespace tessellon::desktop {
namespace {

std::vector<Key> modifierKeys(Held held) {
    switch (held) {
        case Held::controlAlt:
            return {Key::leftControl, Key::leftAlt};
        case Held::controlAltShift:
            return {Key::leftControl, Key::leftAlt, Key::leftShift};
        case Held::controlAltSuper:
            return {Key::leftControl, Key::leftAlt, Key::leftSuper};
    }
    return {};
}

}  // namespace

void Keyboard::fake(std::uint8_t type, Key key) {
    xcb_test_fake_input(x_.connection(), type, static_cast<std::uint8_t>(key), XCB_CURRENT_TIME,
                        XCB_WINDOW_NONE, 0, 0, 0);
}

void Keyboard::press(Key key) {
    fake(XCB_KEY_PRESS, key);
    x_.sync();
}

void Keyboard::release(Key key) {
    fake(XCB_KEY_RELEASE, key);
    x_.sync();
}

void Keyboard::tap(Key key) {
    press(key);
    release(key);
}

void Keyboard::combination(Held held, Key key) {
    combination(modifierKeys(held), key);
}

void Keyboard::combination(const std::vector<Key>& held, Key key) {
    combinationThenTyped(held, key, {});
}

void Keyboard::combinationThenTyped(const std::vector<Key>& held, Key key,
                                    const std::vector<Key>& typed) {
    for (const Key modifier : held) {
        fake(XCB_KEY_PRESS, modifier);
    }
    fake(XCB_KEY_PRESS, key);
    fake(XCB_KEY_RELEASE, key);
    for (auto modifier = held.rbegin(); modifier != held.rend(); ++modifier) {
        fake(XCB_KEY_RELEASE, *modifier);
    }
    for (const Key next : typed) {
        fake(XCB_KEY_PRESS, next);
        fake(XCB_KEY_RELEASE, next);
    }
    x_.sync();
}

bool Keyboard::grab() {
    const Reply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(x_.connection(),
                                xcb_grab_keyboard(x_.connection(), 0, x_.root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

void Keyboard::ungrab() {
    xcb_ungrab_keyboard(x_.connection(), XCB_CURRENT_TIME);
    x_.sync();
}

}  // namespace tessellon::desktop
