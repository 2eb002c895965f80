// Others that go, hang, or take what everybody needs.
#include "stress/scene.h"

#include <csignal>

namespace tessellon::stress {
namespace {

constexpr int most = 4;

void pressSome(Scene& scene) {
    for (int left = scene.random.between(1, most); left > 0; --left) {
        pressSomeShortcut(scene);
    }
}

}  // namespace

void grabKeyboard(Scene& scene) {
    if (!scene.desktop().keyboard().grab()) {
        return;
    }
    pressSome(scene);
    scene.desktop().keyboard().combination({desktop::Key::rightSuper}, desktop::Key::slash);
    scene.stage.waitUntilQuiet();
    scene.desktop().keyboard().ungrab();
}

void grabPointer(Scene& scene) {
    auto& x = scene.desktop().x();
    const desktop::Reply<xcb_grab_pointer_reply_t> reply(xcb_grab_pointer_reply(
        x.connection(),
        xcb_grab_pointer(x.connection(), 0, x.root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                         XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME),
        nullptr));
    scene.desktop().keyboard().press(desktop::Key::leftSuper);
    scene.desktop().pointer().jumpTo(somewhere(scene.random));
    scene.desktop().pointer().press();
    scene.desktop().pointer().moveTo(somewhere(scene.random));
    scene.desktop().pointer().release();
    pressSome(scene);
    scene.stage.letGo();
    xcb_ungrab_pointer(x.connection(), XCB_CURRENT_TIME);
    x.sync();
}

void killWindowManager(Scene& scene) {
    constexpr int mostActionsWithout = 6;
    const bool comesAtOnce = scene.random.chance(50);
    const int later = scene.random.between(1, mostActionsWithout);
    if (scene.random.chance(50)) {
        pressSome(scene);
    }
    scene.stage.killWindowManager();
    if (scene.random.chance(50)) {
        pressSome(scene);
    }
    if (!comesAtOnce) {
        scene.stage.replaceWindowManagerAfter(static_cast<std::size_t>(later));
    }
}

void stopWindowManager(Scene& scene) {
    if (!scene.stage.hasWindowManager()) {
        return;
    }
    if (Client* const client = someClient(scene)) {
        scene.stage.activate(*client);
    }
    stopProcess(scene.desktop().windowManagerProcess(), scene.desktop().x());
    pressSome(scene);
    if (scene.random.chance(50)) {
        scene.desktop().keyboard().combination({desktop::Key::rightSuper}, desktop::Key::slash);
        scene.desktop().keyboard().tap(desktop::Key::escape);
    }
    scene.stage.waitUntilQuiet();
    scene.desktop().windowManagerProcess().signal(SIGCONT);
    scene.stage.waitUntilQuiet();
    scene.desktop().keyboard().tap(desktop::Key::escape);
}

void killTray(Scene& scene) {
    if (scene.stage.hasTray()) {
        scene.stage.killTray();
    } else {
        scene.stage.startTray(scene.random);
    }
}

void killCompositor(Scene& scene) {
    if (scene.stage.hasCompositor()) {
        scene.stage.killCompositor();
    } else {
        scene.stage.startCompositor();
    }
}

void killBus(Scene& scene) {
    scene.stage.restartBus();
}

}  // namespace tessellon::stress
